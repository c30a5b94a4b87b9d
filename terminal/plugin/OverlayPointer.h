#pragma once

#include "terminal/chart/marks/PointerTarget.h"
#include "terminal/plugin/OverlaySet.h"

#include <memory>
#include <vector>

namespace Terminal {

class ChartView;
class HostAxis;

/// Brings the mouse to the overlays of a chart, the uppermost first, and tells which of their marks can be
/// pressed.
///
/// An overlay that was not calculated with the loaded bars still draws marks of others: it is not asked.
class OverlayPointer : public PointerTarget
{
public:
    /// All must outlive this object. `axis` is told where a list that a press opens belongs.
    OverlayPointer(const ChartView *chart, const OverlaySet *overlays, HostAxis *axis);

    bool isHit(const QPointF &position) override;
    void press(const QPointF &position, Qt::MouseButton button) override;
    void release(const QPointF &position, Qt::MouseButton button) override;
    void move(const QPointF &position) override;
    std::vector<ClickableMark> marks() override;

private:
    /// An overlay that is hit, and the place where it is: the middle of its mark, else the pointer's.
    struct Hit
    {
        std::shared_ptr<OverlayHandle> handle; ///< null: nothing is hit
        QPointF place;
    };

    Hit hitAt(const QPointF &position) const;
    bool isOnPricePane(const QPointF &position) const;
    bool takesClicks(const ShownOverlay &overlay) const;
    ClickableMark clickable(const ShownOverlay &overlay, int layer, const DrawnMark &mark) const;

    const ChartView *m_chart;
    const OverlaySet *m_overlays;
    HostAxis *m_axis;
};

} // namespace Terminal
