#include "terminal/trade/OrderPlaces.h"

#include "terminal/chart/marks/glyphs/GlyphSet.h"
#include "terminal/chart/view/ChartView.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace Terminal {

namespace {

/// The bar in which an order of this time was placed; one of closed hours belongs to the next bar.
double barOf(const Bars &bars, Trading::ClockTime time)
{
    const std::int32_t minute = time.minute();
    const auto found =
        std::lower_bound(bars.begin(), bars.end(), minute,
                         [](const Bar &bar, std::int32_t wanted) { return bar.minute < wanted; });
    return static_cast<double>(std::min(found, std::prev(bars.end())) - bars.begin());
}

} // namespace

/// The middle of the mark that the order would have alone. It hangs from its price, or stands on the
/// lower edge of a scale that does not reach down to it.
QPointF OrderPlaces::placeOf(const OrderRecord &order) const
{
    const ChartGeometry &geometry = m_chart.chartGeometry();
    const bool isBelow = order.price <= geometry.lowPrice;
    const double y = geometry.priceToY(std::clamp(order.price, geometry.lowPrice, geometry.highPrice));
    return {geometry.barToX(barOf(m_chart.data().bars, order.time.value_or(Trading::ClockTime()))),
            y + (isBelow ? -orderGlyphSize : orderGlyphSize) / 2};
}

std::optional<double> OrderPlaces::distance(const DrawnMark &mark, const QPointF &place) const
{
    // The overlay may show the first minutes one bar later.
    const double reach = std::max(orderGlyphSize / 2, 1.5 * m_chart.chartGeometry().barWidth());
    std::optional<double> least;
    for (const QPointF &marked : m_marks.placesOf(mark)) {
        const QPointF away = marked - place;
        if (std::abs(away.x()) <= reach && std::abs(away.y()) <= orderGlyphSize / 2) {
            const double distance = std::hypot(away.x(), away.y());
            least = least ? std::min(*least, distance) : distance;
        }
    }
    return least;
}

const DrawnMark *OrderPlaces::markNear(const QPointF &place) const
{
    const DrawnMark *nearest = nullptr;
    double least = std::numeric_limits<double>::max();
    for (const DrawnMark &mark : m_marks.all()) {
        const std::optional<double> away = distance(mark, place);
        if (away && *away < least) {
            nearest = &mark;
            least = *away;
        }
    }
    return nearest;
}

const DrawnMark *OrderPlaces::markOf(const OrderRecord &order) const
{
    return canPlace() ? markNear(placeOf(order)) : nullptr;
}

/// There may be many thousand orders and marks: all marks are looked at only for an order that is near this
/// one.
OrderRecords OrderPlaces::ordersAt(const QPointF &position, const OrderRecords &orders) const
{
    const DrawnMark *const mark = m_marks.markAt(position);
    OrderRecords found;
    if (mark != nullptr && canPlace()) {
        std::copy_if(orders.begin(), orders.end(), std::back_inserter(found),
                     [this, mark](const OrderRecord &order) {
                         const QPointF place = placeOf(order);
                         return distance(*mark, place) && markNear(place) == mark;
                     });
    }
    return found;
}

bool OrderPlaces::canPlace() const
{
    return m_chart.chartGeometry().hasScale() && !m_chart.data().bars.empty();
}

} // namespace Terminal
