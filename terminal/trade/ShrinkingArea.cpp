#include "terminal/trade/ShrinkingArea.h"

#include <QEvent>

namespace Terminal {

namespace {

constexpr int leastHeight = 60; ///< a field with its caption

} // namespace

ShrinkingArea::ShrinkingArea(QWidget *content, QWidget *parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setWidget(content);
    content->setAutoFillBackground(false); // the area would fill it in the colour of a button
    viewport()->setAutoFillBackground(false);
}

int ShrinkingArea::heightForWidth(int width) const
{
    return widget()->hasHeightForWidth() ? widget()->heightForWidth(width) : widget()->sizeHint().height();
}

QSize ShrinkingArea::sizeHint() const
{
    const int width = widget()->sizeHint().width();
    return {width, heightForWidth(width)};
}

QSize ShrinkingArea::minimumSizeHint() const
{
    return {widget()->minimumSizeHint().width(), leastHeight};
}

bool ShrinkingArea::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == widget() && event->type() == QEvent::LayoutRequest) {
        updateGeometry();
    }
    return QScrollArea::eventFilter(watched, event);
}

} // namespace Terminal
