#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

namespace Terminal {

/// Drags a widget by its middle, to the right when `distance` is positive.
inline void drag(QWidget *widget, int distance)
{
    const QPointF from = widget->rect().center();
    const auto send = [&](QEvent::Type type, const QPointF &place) {
        QMouseEvent event(type, place, widget->mapToGlobal(place.toPoint()), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QApplication::sendEvent(widget, &event);
    };
    send(QEvent::MouseButtonPress, from);
    send(QEvent::MouseMove, from + QPointF(distance, 0));
    send(QEvent::MouseButtonRelease, from + QPointF(distance, 0));
}

} // namespace Terminal
