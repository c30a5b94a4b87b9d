#pragma once

#include "terminal/trade/DeskOutcome.h"
#include "terminal/trades/OrderLines.h"
#include "terminal/trades/TradesDesk.h"
#include "terminal/trades/TradesInput.h"
#include "terminal/trades/TradesLayer.h"
#include "terminal/trades/TradesPointer.h"
#include "trading/SecurityRules.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

class QAction;
class QMainWindow;

namespace Terminal {

class ChartTrail;
class OverlayHost;
class TradeDock;
class TradeDocks;
class TradesPanel;
class UserPrompts;

/// All trades of the shown security at their minute and price, and the orders that work as lines that can be
/// moved, on charts of every period, with a list of the trades; wired to the lists of orders, so that a row
/// leads to its place on the chart and a mark to its row.
///
/// Where an overlay marks the same trades on the days of a chart, nothing is drawn twice: the overlay's marks
/// stay. Overlays hear none of what is asked here.
class ChartTrades : public QObject
{
    Q_OBJECT

public:
    /// What is known of days and prices besides the chart.
    struct Facts
    {
        /// The close by which today's price limits go.
        std::function<std::optional<double>(const ChartData &)> closeBefore;
        /// The day whose rules of the market orders must keep to.
        std::function<Trading::TradingDate()> dayOfRules;
        /// True when the minutes of a day are recorded.
        std::function<bool(const QString &code, Trading::TradingDate day)> hasMinutes;
    };

    /// All must outlive this object, but the window may be going.
    ChartTrades(QMainWindow *window, ChartView *chart, TradeDocks *docks, ChartTrail *trail,
                UserPrompts *prompts, Facts facts);
    ~ChartTrades() override;

    /// Joins the bus instance of `address`. To be called once.
    void start(const QString &address);
    /// The overlays of the chart; they answer to the mouse first.
    void setOverlays(OverlayHost *overlays);

    /// What the keyboard goes through on the chart: marks of overlays, and of trades.
    PointerTarget *pointer() { return &m_pointer; }

    void setTheme(const ChartTheme &theme);
    void setAmountsHidden(bool hidden);
    void showTexts();

    /// The switch of what is drawn; on at first.
    QAction *layerAction() const { return m_layerAction; }
    /// Shows or hides the list.
    QAction *listAction() const;
    /// Shows the list, with the keyboard in it.
    void openList();

    TradesDesk *desk() { return &m_desk; }
    TradesPanel *panel() const { return m_panel; }
    const TradesLayer *layer() const { return m_layer.get(); }
    const OrderLines *lines() const { return m_lines.get(); }

    /// The price that an order of the shown security may have next to this one: on a tick, within the limits
    /// of the day.
    double allowedPrice(double wished) const;

Q_SIGNALS:
    /// The user wants to see this chart.
    void chartAsked(const QString &code, ChartPeriod period, std::optional<Trading::TradingDate> day);

private:
    Trading::SecurityRules rulesOf(const Security &security) const;
    void addActions(QMainWindow *window);
    void wireChart();
    void wireLists();
    void wireDesks();
    void takeChart();
    Trades toldTrades() const;
    void takeOrders();
    void watchWhenNeeded();
    bool showsTrades() const;
    bool showsOrders() const;
    double roomOfLabels() const;
    bool isOverlayAt(const QPointF &position) const;
    void chooseTrades(const std::vector<size_t> &trades);
    void showTrade(size_t number);
    void showTradesOf(const Security &security);
    void showNewestWhenKnown();
    void showOrder(const OrderRecord &order);
    bool showPlace(Trading::TradingDate day, Trading::ClockTime time, double price);
    void askForPrice(const OrderRecord &order);
    void askToReplace(const PriceChange &change);
    void tell(const PriceChange &change, const QString &text, bool isGood);
    void tellReplaced(const PriceChange &change, const DeskOutcome &outcome);

    QMainWindow *m_window;
    ChartView *m_chart;
    TradeDocks *m_docks;
    ChartTrail *m_trail;
    UserPrompts *m_prompts;
    Facts m_facts;
    QPointer<OverlayHost> m_overlays;
    bool m_isStarted = false;
    bool m_hidesAmounts = false;
    bool m_wishesNewest = false; ///< the newest trade is to be shown, once trades are known
    TradesDesk m_desk;
    std::unique_ptr<TradesLayer> m_layer;
    TradesPointer m_pointer;
    std::unique_ptr<OrderLines> m_lines;
    std::unique_ptr<TradesInput> m_input;
    TradesPanel *m_panel;
    TradeDock *m_dock;
    QAction *m_layerAction;
};

} // namespace Terminal
