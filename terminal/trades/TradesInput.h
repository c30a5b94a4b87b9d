#pragma once

#include "terminal/trade/TradeRecords.h"
#include "terminal/trades/TradesLayer.h"

#include <QObject>
#include <QPointF>

#include <functional>
#include <optional>

class QMouseEvent;

namespace Terminal {

class ChartView;
class OrderLines;

/// The mouse on trades and working orders of a chart: a click chooses them, and the line of an order follows
/// the pointer until it is let go. Escape takes it back. Everything else, and what overlays answer to, is
/// left to the chart.
class TradesInput : public QObject
{
    Q_OBJECT

public:
    struct Rules
    {
        /// True where something that lies above answers to the mouse.
        std::function<bool(const QPointF &)> isTaken;
        /// True while orders may be moved.
        std::function<bool()> mayMove;
        /// The price that an order may have next to this one.
        std::function<double(double)> allowedPrice;
    };

    /// All must outlive this object.
    TradesInput(ChartView *chart, const TradesLayer *trades, OrderLines *orders, Rules rules);

    /// Hears the mouse before those who listen to the chart until now.
    void comeFirst();

Q_SIGNALS:
    void tradesClicked(const std::vector<size_t> &trades);
    void orderClicked(const OrderRecord &order);
    /// An order was let go at another price.
    void orderMoved(const PriceChange &change);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// A press on an order, until the button is released.
    struct Drag
    {
        OrderRecord order;
        QPointF start;
        double lead = 0; ///< from the pointer to the line, in pixels
        bool hasMoved = false;
        bool isCancelled = false;
    };

    bool press(const QMouseEvent &event);
    bool move(const QMouseEvent &event);
    bool release();
    void forgetDrag();
    bool escape();
    void startDrag(const OrderRecord &order, const QPointF &position);
    double priceAt(const QPointF &position) const;

    ChartView *m_chart;
    const TradesLayer *m_trades;
    OrderLines *m_orders;
    Rules m_rules;
    std::optional<Drag> m_drag;
    double m_price = 0; ///< of the dragged line
};

} // namespace Terminal
