#pragma once

#include "terminal/chart/marks/glyphs/GlyphSet.h"

#include <QPointF>
#include <QRectF>

#include <functional>
#include <vector>

namespace Terminal {

/// A glyph on a chart that can be pressed.
struct ClickableMark
{
    GlyphNumber glyph = 0;
    int count = 1; ///< marks that the glyph stands for
    int layer = 0; ///< of the overlay that drew it: tells marks at one place apart
    QRectF box;
    /// Does what a click on it does; may run menus and dialogs before it returns.
    std::function<void()> press;
};

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

    /// The glyphs of the last repaint. Valid until the next one.
    virtual std::vector<ClickableMark> marks() = 0;
};

} // namespace Terminal
