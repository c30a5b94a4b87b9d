#include "terminal/ui/ToolBarRows.h"

#include <QEvent>
#include <QMainWindow>
#include <QToolBar>

#include <utility>

namespace Terminal {

ToolBarRows::ToolBarRows(QMainWindow *window, std::vector<QToolBar *> bars)
    : m_window(window),
      m_bars(std::move(bars))
{
    m_window->installEventFilter(this);
    for (QToolBar *const bar : m_bars) {
        bar->installEventFilter(this);
    }
    layOut();
}

bool ToolBarRows::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::LayoutRequest:
    case QEvent::LanguageChange:
        layOut();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

/// A break is touched only where it changes: each change lays the window out anew.
void ToolBarRows::layOut()
{
    int used = 0;
    for (QToolBar *const bar : m_bars) {
        const int needed = bar->sizeHint().width();
        const bool beginsRow = used > 0 && used + needed > m_window->width();
        used = beginsRow ? needed : used + needed;
        if (beginsRow && !m_window->toolBarBreak(bar)) {
            m_window->insertToolBarBreak(bar);
        } else if (!beginsRow && m_window->toolBarBreak(bar)) {
            m_window->removeToolBarBreak(bar);
        }
    }
}

} // namespace Terminal
