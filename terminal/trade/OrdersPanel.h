#pragma once

#include "terminal/trade/TradeTables.h"

#include <QWidget>

#include <optional>

class QLabel;

namespace Terminal {

class OrdersBar;
class OrdersView;
class PositionsView;
class SharedWidth;

/// Orders, and what the account holds, side by side, or one at a time where that is too wide. The orders are
/// those of the shown security on one day, or of all securities those that may still be dealt.
///
/// Until the user shares the width out between the two tables, each has what its columns need.
class OrdersPanel : public QWidget
{
    Q_OBJECT

public:
    explicit OrdersPanel(QWidget *parent = nullptr);

    /// Of `day`, or of today when there is none.
    void setOrders(const OrderRecords &orders, std::optional<Trading::TradingDate> day);
    /// Of all securities; nothing: they are not known.
    void setWorkingOrders(const std::optional<OrderRecords> &orders);
    /// Lists those of all securities until the user chooses otherwise, or they are not known.
    void listWorkingOrders();
    /// Nothing: the account is not known.
    void setAccount(const std::optional<Account> &account);
    /// Positions are priced by this from now on; it must outlive the panel.
    void setPrices(LastPriceOf lastPrice);
    /// Other prices are known now.
    void showPrices() { showAccount(); }
    /// The security on the chart, whose name the module need not know.
    void setShownSecurity(const Security &security);
    /// Says in the panel whether its figures are kept up to date.
    void setAnswering(bool isAnswering);
    /// Says why the trading module does not tell the orders, or the account; empty where it does.
    void setRefusals(const QString &ofOrders, const QString &ofAccount);
    void setTheme(const ChartTheme &theme);
    void setAmountsHidden(bool hidden);

    /// Selects the rows of these orders and brings the first of them into view.
    void select(const OrderRecords &orders);
    OrderRecords selected() const;

    /// How the user has shared the width out, for a later run; empty until then.
    QByteArray sharing() const;
    /// Shares the width as it was; changes nothing when the bytes are of no panel.
    void restoreSharing(const QByteArray &sharing);

    /// Puts the keyboard into the orders.
    void focusOrders();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// Other rows are selected, or the selected orders have changed.
    void selectionChanged();
    /// The user wants these orders to be cancelled; they can be.
    void cancelAsked(const OrderRecords &orders);
    /// The user wants another price for this order; it can be cancelled.
    void priceAsked(const OrderRecord &order);
    /// The user wants to see this order on the chart.
    void placeAsked(const OrderRecord &order);
    /// The user wants to see the chart of what he holds.
    void chartAsked(const Security &security);
    /// The user wants to see its trades.
    void tradesAsked(const Security &security);
    /// The user wants to sell what can be sold of it, which is something.
    void closeAsked(const Position &position);

protected:
    void changeEvent(QEvent *event) override;

private:
    void setUpOrders();
    void listOrders();
    void showTexts();
    QString ordersTitle() const;
    void showCancellable();
    OrderRecords cancellable() const;
    void showAccount();
    QString accountCaption(bool hasReplayed) const;

    OrdersTable m_orders;
    PositionsTable m_positions;
    OrdersBar *m_ordersBar;
    QLabel *m_accountCaption;
    OrdersView *m_ordersView;
    PositionsView *m_positionsView;
    SharedWidth *m_halves;
    OrderRecords m_shownOrders;
    std::optional<OrderRecords> m_working;
    std::optional<Account> m_account;
    Security m_shownSecurity;
    LastPriceOf m_lastPrice = [](const Security &) { return std::nullopt; };
    QString m_ordersRefusal;
    QString m_accountRefusal;
    std::optional<Trading::TradingDate> m_day; ///< nothing: today
    bool m_isAnswering = false;
    bool m_hidesAmounts = false;
};

} // namespace Terminal
