#pragma once

#include "terminal/trade/OrderPlaces.h"

#include <qwt_plot_item.h>

#include <functional>
#include <utility>

namespace Terminal {

/// Rings around the marks of chosen orders. It is drawn after the overlay, around what that has drawn.
class OrderSpotlight : public QwtPlotItem
{
public:
    /// `chart` is borrowed; `marks` gives what the overlay has drawn, or null.
    OrderSpotlight(ChartView *chart, std::function<const DrawnMarks *()> marks);

    void setOrders(OrderRecords orders) { m_orders = std::move(orders); }

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvasRect) const override;

private:
    ChartView *m_chart;
    std::function<const DrawnMarks *()> m_marks;
    OrderRecords m_orders;
};

} // namespace Terminal
