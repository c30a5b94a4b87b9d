#pragma once

#include "terminal/data/DataFolder.h"
#include "terminal/trade/ChartOrders.h"
#include "terminal/trade/OrderDesk.h"
#include "terminal/trade/OrderDraft.h"

#include <functional>

class QAction;
class QDockWidget;
class QMainWindow;

namespace Terminal {

class OrdersPanel;
class OrderTicket;
class UserPrompts;

/// Trading from the chart: the order ticket right of it and the orders-and-positions panel below, both
/// hidden at first, wired to each other, to the chart and to the trading module.
class TradeDocks : public QObject
{
    Q_OBJECT

public:
    /// The close by which today's price limits go, of what a chart shows.
    using CloseBefore = std::function<std::optional<double>(const ChartData &)>;

    /// `window`, `chart`, `desk` and `prompts` must outlive this object. The desk asks from when a dock is
    /// first shown.
    TradeDocks(QMainWindow *window, ChartView *chart, OrderDesk *desk, UserPrompts *prompts,
               CloseBefore closeBefore);
    ~TradeDocks() override;

    /// The overlays whose marks stand for orders.
    void setOverlays(OverlayHost *overlays) { m_chartOrders.setOverlays(overlays); }

    void setTheme(const ChartTheme &theme);
    void setAmountsHidden(bool hidden);
    void showTexts();

    /// Shows or hides both docks.
    void setShown(bool shown);
    /// Opens the ticket with the keyboard in its price.
    void openTicket(Direction side);

    QAction *ticketAction() const { return m_ticketAction; }
    QAction *panelAction() const { return m_panelAction; }

    OrderDesk *desk() { return &m_desk; }
    OrderTicket *ticket() const { return m_ticket; }
    OrdersPanel *panel() const { return m_panel; }

    /// Takes what the chart shows now: its security, day and last price.
    void showChart();

private:
    QDockWidget *addDock(const char *name, QWidget *content, Qt::DockWidgetArea area);
    void addShortcuts();
    void wireTicket();
    void wirePanel();
    void wireDesk();
    void watchWhenShown();
    void showLastPrice();
    void showOrders();
    void showFacts();
    void sendOrder(const OrderRequest &order);
    void askToCancel(const OrderRecord &order);
    void tellPlaced(const OrderRequest &order, const DeskOutcome &outcome);
    void tellCancelled(const OrderRecord &order, const DeskOutcome &outcome);
    std::optional<Trading::TradingDate> shownDay() const;

    QMainWindow *m_window;
    ChartView *m_chart;
    UserPrompts *m_prompts;
    CloseBefore m_closeBefore;
    DraftFacts m_facts;
    bool m_hidesAmounts = false;
    OrderDesk &m_desk;
    ChartOrders m_chartOrders;
    OrderTicket *m_ticket;
    OrdersPanel *m_panel;
    QDockWidget *m_ticketDock;
    QDockWidget *m_panelDock;
    QAction *m_ticketAction;
    QAction *m_panelAction;
};

} // namespace Terminal
