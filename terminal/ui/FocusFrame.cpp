#include "terminal/ui/FocusFrame.h"

#include <QEvent>
#include <QPainter>

namespace Terminal {

FocusFrame::FocusFrame(QWidget *framed) : QWidget(framed->parentWidget()), m_framed(framed)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    framed->installEventFilter(this);
    follow();
}

void FocusFrame::setColour(const QColor &colour)
{
    m_colour = colour;
    update();
}

bool FocusFrame::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::Move:
    case QEvent::Resize:
        follow();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

/// Only its edge lies over the widget, so that a repaint of that one is none of the frame.
void FocusFrame::follow()
{
    setGeometry(m_framed->geometry());
    setMask(QRegion(rect()) - QRegion(rect().adjusted(1, 1, -1, -1)));
    setVisible(m_framed->hasFocus());
    raise();
}

void FocusFrame::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_colour);
}

} // namespace Terminal
