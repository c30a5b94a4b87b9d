#pragma once

#include "terminal/data/DataFolder.h"
#include "terminal/trade/ChartOrders.h"
#include "terminal/trade/DealNotice.h"
#include "terminal/trade/DealWatch.h"
#include "terminal/trade/LastPrice.h"
#include "terminal/trade/OrderDesk.h"
#include "terminal/trade/OrderDraft.h"

#include <functional>
#include <optional>

class QAction;
class QMainWindow;

namespace Terminal {

class OrdersPanel;
class OrderTicket;
class TradeDock;
class UserPrompts;

/// Trading from the chart: the order ticket right of it and the orders-and-positions panel below, both
/// hidden at first, wired to each other, to the chart and to the trading module.
class TradeDocks : public QObject
{
    Q_OBJECT

public:
    /// What is known of prices besides the chart.
    struct Prices
    {
        /// The close by which today's price limits go, of what a chart shows.
        std::function<std::optional<double>(const ChartData &)> closeBefore;
        LastPriceOf last;
        /// The day whose rules of the market orders must keep to.
        std::function<Trading::TradingDate()> dayOfRules = &Trading::TradingDate::today;
    };

    /// `window`, `chart`, `desk`, `prompts` and what `prices` ask must outlive this object. The desk asks
    /// from when a dock is first shown.
    TradeDocks(QMainWindow *window, ChartView *chart, OrderDesk *desk, UserPrompts *prompts, Prices prices);
    ~TradeDocks() override;

    /// The overlays whose marks stand for orders.
    void setOverlays(OverlayHost *overlays) { m_chartOrders.setOverlays(overlays); }

    void setTheme(const ChartTheme &theme);
    void setAmountsHidden(bool hidden);
    void showTexts();

    /// Shows or hides both docks.
    void setShown(bool shown);
    /// The panel lists the working orders of all securities, whether it is shown now or later, until the user
    /// chooses otherwise. Requires that the desk knows them.
    void listWorkingOrders();
    /// Opens the ticket with the keyboard in its price.
    void openTicket(Direction side);

    /// Names the account that orders are for, in the ticket and in the question; empty: it is not known.
    void setAccount(const QString &account);
    /// The trading module says whether its ledger can only be read.
    void setReadOnly(bool isReadOnly);
    /// The trading module that is there serves another account than the window's: no order is for it.
    void setOtherAccount(bool isOther);
    /// The account practises a day, which stands still when its window is left. `standstill` tells what
    /// becomes of an order when the day stands still now; else nothing.
    void setPractice(std::function<QString()> standstill) { m_standstill = std::move(standstill); }
    /// Other prices are known now.
    void showPrices();

    /// Asks the user whether he leaves the account while orders wait that the desk knows of; true without
    /// any.
    bool mayLeave();

    /// How it is told that an order was dealt.
    DealNotice *notice() { return &m_notice; }

    /// The switch of the question before an order is sent; on at first.
    QAction *askAction() const { return m_askAction; }

    QAction *ticketAction() const { return m_ticketAction; }
    QAction *panelAction() const { return m_panelAction; }

    OrderDesk *desk() { return &m_desk; }
    OrderTicket *ticket() const { return m_ticket; }
    OrdersPanel *panel() const { return m_panel; }

    /// Takes what the chart shows now: its security, day and last price.
    void showChart();

Q_SIGNALS:
    /// The user wants to see the chart of a security.
    void chartAsked(const QString &code);

private:
    void addShortcuts();
    void wireTicket();
    void wirePanel();
    void wireDesk();
    void watchWhenShown();
    void showOrders();
    void showFacts();
    void sendOrder(const OrderRequest &order);
    bool isConfirmed(const OrderRequest &order);
    std::optional<double> offeredPrice() const;
    void tellAskedAgain(const OrderRequest &order);
    bool isWanted(const OrderRecords &cancelling);
    void askToCancel(const OrderRecords &orders);
    void close(const Position &position);
    void watchDeals();
    void tellPlaced(const OrderRequest &order, const DeskOutcome &outcome);
    void tellCancelled(const OrderRecord &order, const DeskOutcome &outcome);
    std::optional<Trading::TradingDate> shownDay() const;

    QMainWindow *m_window;
    ChartView *m_chart;
    UserPrompts *m_prompts;
    Prices m_prices;
    QString m_account;
    DraftFacts m_facts;
    bool m_hidesAmounts = false;
    std::function<QString()> m_standstill; ///< of a practice alone
    OrderDesk &m_desk;
    ChartOrders m_chartOrders;
    DealWatch m_deals;
    DealNotice m_notice;
    OrderTicket *m_ticket;
    OrdersPanel *m_panel;
    TradeDock *m_ticketDock;
    TradeDock *m_panelDock;
    QAction *m_ticketAction;
    QAction *m_panelAction;
    QAction *m_askAction;
};

} // namespace Terminal
