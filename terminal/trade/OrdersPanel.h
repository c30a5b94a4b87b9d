#pragma once

#include "terminal/trade/TradeTables.h"

#include <QWidget>

#include <optional>

class QLabel;

namespace Terminal {

class OrdersView;
class RecordView;
class SharedWidth;

/// The orders of the shown security on one day, and what the account holds, side by side. Delete or the
/// menu of a row asks for the cancellation of its order.
///
/// Until the user shares the width out between the two tables, each has what its columns need. Where both
/// together need more, names and states are cut and shown by tool tips.
class OrdersPanel : public QWidget
{
    Q_OBJECT

public:
    explicit OrdersPanel(QWidget *parent = nullptr);

    /// Of `day`, or of today when there is none.
    void setOrders(const OrderRecords &orders, std::optional<Trading::TradingDate> day);
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

Q_SIGNALS:
    /// Other rows are selected, or the selected orders have changed.
    void selectionChanged();
    /// The user wants this order to be cancelled; it can be.
    void cancelAsked(const OrderRecord &order);
    /// The user wants another price for this order; it can be cancelled.
    void priceAsked(const OrderRecord &order);
    /// The user wants to see this order on the chart.
    void placeAsked(const OrderRecord &order);

protected:
    void changeEvent(QEvent *event) override;

private:
    void showTexts();
    void showAccount();
    QString accountCaption(bool hasReplayed) const;

    OrdersTable m_orders;
    PositionsTable m_positions;
    QLabel *m_ordersCaption;
    QLabel *m_accountCaption;
    OrdersView *m_ordersView;
    RecordView *m_positionsView;
    SharedWidth *m_halves;
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
