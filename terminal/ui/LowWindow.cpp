#include "terminal/ui/LowWindow.h"

#include <QDockWidget>
#include <QEvent>
#include <QMainWindow>

namespace Terminal {

namespace {

constexpr int lowHeight = 600;

} // namespace

LowWindow::LowWindow(QMainWindow *window) : QObject(window), m_window(window)
{
    window->installEventFilter(this);
    follow();
}

bool LowWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize) {
        follow();
    }
    return QObject::eventFilter(watched, event);
}

void LowWindow::follow()
{
    const bool isLow = m_window->height() < lowHeight;
    if (isLow != m_isLow) {
        m_isLow = isLow;
        showTitles(!isLow);
    }
}

void LowWindow::showTitles(bool shown)
{
    for (QDockWidget *const dock : m_window->findChildren<QDockWidget *>()) {
        if (m_window->dockWidgetArea(dock) == Qt::BottomDockWidgetArea) {
            const QWidget *const before = dock->titleBarWidget();
            dock->setTitleBarWidget(shown ? nullptr : new QWidget(dock));
            delete before;
        }
    }
}

} // namespace Terminal
