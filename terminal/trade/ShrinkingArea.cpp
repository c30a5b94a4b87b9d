#include "terminal/trade/ShrinkingArea.h"

#include <QApplication>
#include <QEvent>
#include <QResizeEvent>

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
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    setWidget(content);
    content->setAutoFillBackground(false); // the area would fill it in the colour of a button
    viewport()->setAutoFillBackground(false);
}

/// As high as the content is in the width that there is. It is no height for a width to a layout: that would
/// be the least one, too.
QSize ShrinkingArea::sizeHint() const
{
    const QSize content = widget()->sizeHint();
    return {content.width(),
            widget()->hasHeightForWidth() ? widget()->heightForWidth(width()) : content.height()};
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
    const bool isFiltered = QScrollArea::eventFilter(watched, event);
    if (watched == widget() && event->type() == QEvent::Resize) {
        keepFocusInSight();
    }
    return isFiltered;
}

void ShrinkingArea::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    if (event->size().width() != event->oldSize().width()) {
        updateGeometry();
    }
    keepFocusInSight();
}

/// A message below the area may have taken its room.
void ShrinkingArea::keepFocusInSight()
{
    QWidget *const focus = QApplication::focusWidget();
    if (focus != nullptr && isAncestorOf(focus)) {
        ensureWidgetVisible(focus, 0, 0);
    }
}

} // namespace Terminal
