#pragma once

#include "terminal/chart/marks/PointerTarget.h"

#include <functional>

namespace Terminal {

class TradesLayer;

/// What the keyboard goes through on a chart: the marks of overlays, and the trades beside them. The mouse on
/// trades is heard elsewhere; here it is the overlays'.
class TradesPointer : public PointerTarget
{
public:
    struct Parts
    {
        std::function<PointerTarget *()> overlays; ///< null without any
        std::function<bool()> showsTrades;
        std::function<void(const std::vector<size_t> &)> choose; ///< trades by number, as a click does
    };

    /// `layer` must outlive the pointer.
    TradesPointer(const TradesLayer *layer, Parts parts);

    bool isHit(const QPointF &position) override;
    void press(const QPointF &position, Qt::MouseButton button) override;
    void release(const QPointF &position, Qt::MouseButton button) override;
    void move(const QPointF &position) override;
    std::vector<ClickableMark> marks() override;

private:
    const TradesLayer *m_layer;
    Parts m_parts;
};

} // namespace Terminal
