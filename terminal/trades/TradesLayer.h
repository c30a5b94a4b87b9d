#pragma once

#include "terminal/trades/OrderPath.h"
#include "terminal/trades/TradeClusters.h"

#include <qwt_plot_item.h>

#include <QSet>

#include <functional>
#include <optional>
#include <utility>

namespace Terminal {

class ChartView;

/// Trades at their minute and price, and where their orders were placed, drawn over the candles and below the
/// overlays. Where things are is reckoned when chart, trades or orders change, what is in view when the view
/// does; a repaint only draws.
class TradesLayer : public QwtPlotItem
{
public:
    /// `chart` is borrowed; `isShown` says at each repaint whether anything is drawn.
    TradesLayer(ChartView *chart, std::function<bool()> isShown);

    /// Oldest first.
    void setTrades(Trades trades);
    /// Of which the places are marked; paths lead from them to their trades.
    void setOrders(OrderRecords orders);
    /// Rings around the marks of these trades, by number, and around the places of these orders.
    void setSelected(const std::vector<size_t> &trades);
    void setSelectedOrders(const OrderRecords &orders);
    /// To be called when the chart has other bars or prices.
    void takeChart();
    /// The same when bars from this number on are others, or were added: mostly cheap.
    void takeGrown(int first);

    const Trades &trades() const { return m_trades; }
    const TradePlaces &places() const { return m_places; }
    /// The marks in view.
    const TradeMarkList &marks() const;
    /// The mark at a pixel of the canvas; null for none, and while nothing is drawn.
    const TradeMark *markAt(const QPointF &position) const;

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvasRect) const override;

private:
    /// What the marks were reckoned for.
    struct View
    {
        ChartGeometry geometry;
        bool operator==(const View &other) const;
    };

    void reckonPaths();
    void drawPaths(QPainter *painter) const;
    bool isSelected(const TradeMark &mark) const;

    ChartView *m_chart;
    std::function<bool()> m_isShown;
    Trades m_trades;
    OrderRecords m_orders;
    TradePlaces m_places;
    OrderPaths m_paths;
    std::vector<size_t> m_selected; ///< sorted
    QSet<QString> m_selectedOrders; ///< by number
    mutable std::optional<View> m_view;
    mutable TradeMarkList m_marks;
};

} // namespace Terminal
