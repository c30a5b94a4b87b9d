#pragma once

#include "terminal/chart/marks/DrawnMarks.h"
#include "terminal/trade/TradeRecords.h"

#include <optional>

namespace Terminal {

class ChartView;

/// Which orders belong to which of the marks that an overlay has drawn on a minute chart. The overlay
/// does not tell; an order belongs to the mark that lies nearest to its minute and price.
class OrderPlaces
{
public:
    /// Both must outlive this object.
    OrderPlaces(const ChartView &chart, const DrawnMarks &marks) : m_chart(chart), m_marks(marks) {}

    /// The mark of an order; null when none is near, for an order that overlays do not mark.
    const DrawnMark *markOf(const OrderRecord &order) const;

    /// Those of `orders` that the mark at a pixel of the canvas stands for.
    OrderRecords ordersAt(const QPointF &position, const OrderRecords &orders) const;

private:
    bool canPlace() const;
    QPointF placeOf(const OrderRecord &order) const;
    /// From the nearest of the places that a mark stands for; nothing when none is within reach.
    std::optional<double> distance(const DrawnMark &mark, const QPointF &place) const;
    const DrawnMark *markNear(const QPointF &place) const;

    const ChartView &m_chart;
    const DrawnMarks &m_marks;
};

} // namespace Terminal
