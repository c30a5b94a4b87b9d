#include "terminal/trade/ShrinkingArea.h"

#include <QApplication>
#include <QEvent>
#include <QResizeEvent>

#include <algorithm>

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
    return {widget()->minimumSizeHint().width(), std::min(leastHeight, sizeHint().height())};
}

bool ShrinkingArea::eventFilter(QObject *watched, QEvent *event)
{
    const bool isOfContent = watched == widget();
    if (isOfContent && event->type() == QEvent::LayoutRequest) {
        updateGeometry();
    }
    if (isOfContent && (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize)) {
        // When its parts have their places.
        QMetaObject::invokeMethod(this, &ShrinkingArea::keepFocusInSight, Qt::QueuedConnection);
    }
    return QScrollArea::eventFilter(watched, event);
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
        bringIntoSight(focus);
    }
}

/// The whole of it: the base class is content with the cursor in a field.
void ShrinkingArea::bringIntoSight(const QWidget *part)
{
    const QPoint centre = part->mapTo(widget(), part->rect().center());
    ensureVisible(centre.x(), centre.y(), 0, part->height() / 2 + 1);
}

} // namespace Terminal
