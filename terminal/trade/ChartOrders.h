#pragma once

#include "terminal/trade/OrderPlaces.h"

#include <QObject>
#include <QPointer>

#include <memory>
#include <optional>

namespace Terminal {

class OrderSpotlight;
class OverlayHost;

/// The orders on a chart: rings around the marks of those that are chosen elsewhere, and what the pointer
/// points at. It listens to the mouse and takes nothing away from the chart.
class ChartOrders : public QObject
{
    Q_OBJECT

public:
    /// `chart` must outlive this object.
    explicit ChartOrders(ChartView *chart);
    ~ChartOrders() override;

    /// The overlays that draw the marks; null for none.
    void setOverlays(OverlayHost *overlays);

    /// The orders that may stand on the chart.
    void setOrders(const OrderRecords &orders) { m_orders = orders; }

    /// Rings the marks of these orders.
    void setSpotlight(const OrderRecords &orders);

    /// The marks of orders that were drawn last; null without the overlay that draws them.
    const DrawnMarks *marks() const;

Q_SIGNALS:
    /// The pointer came onto the mark of these orders, or clicked it.
    void pointedAt(const OrderRecords &orders);
    /// A click, not a drag, at this price, where nothing else answers to it.
    void priceClicked(double price);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void point(const QPointF &position);
    void press(const QPointF &position);
    void release(const QPointF &position);

    ChartView *m_chart;
    QPointer<OverlayHost> m_overlays;
    OrderRecords m_orders;
    std::unique_ptr<OrderSpotlight> m_spotlight;
    std::optional<QRectF> m_pointed; ///< the box of the mark under the pointer
    std::optional<QPointF> m_pressed;
};

} // namespace Terminal
