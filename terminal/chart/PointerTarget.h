#pragma once

#include <QPointF>

namespace Terminal {

/// What lies on a chart and answers to the mouse. Positions are pixels of the canvas.
class PointerTarget
{
public:
    virtual ~PointerTarget() = default;

    /// True when something at `position` can be clicked.
    virtual bool isHit(const QPointF &position) = 0;
    /// A button went down on something that is hit. May run menus and dialogs before it returns.
    virtual void press(const QPointF &position, Qt::MouseButton button) = 0;
    virtual void release(const QPointF &position, Qt::MouseButton button) = 0;
    virtual void move(const QPointF &position) = 0;
};

} // namespace Terminal
