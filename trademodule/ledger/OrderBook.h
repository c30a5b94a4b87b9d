#pragma once

#include "trademodule/ledger/Ledger.h"
#include "trademodule/ledger/Order.h"
#include "trademodule/ledger/ReplacementTable.h"
#include "trademodule/ledger/Transaction.h"

#include <optional>

namespace TradeModule {

/// The account's orders and the cash they are paid from, in its ledger. Changes are made inside a
/// transaction of the caller's, see begin(); failures are thrown as LedgerErrors.
class OrderBook
{
public:
    /// The ledger stays the caller's and outlives this object.
    explicit OrderBook(Ledger *ledger);

    /// See Ledger.
    TradingDate today() const { return m_ledger->today(); }
    std::optional<TradingDate> practisedDay() const { return m_ledger->practisedDay(); }
    ReplacementTable replacements() const { return ReplacementTable(m_database); }

    Transaction begin() { return Transaction(m_database); }
    /// What became of a change that failed as OutcomeUnknown, see Database.
    bool isCommitted(qint64 mark) { return m_database->isCommitted(mark); }

    /// Writes a new order; its number comes back.
    qint64 add(const Order &order);
    /// Writes status and quantities of an order.
    void update(const Order &order);
    /// Writes an execution of an order: the trade, the holding and the cash. The order itself is left to
    /// update().
    void execute(const Execution &execution);

    std::optional<Order> find(TradingDate date, qint64 number);
    /// The order that an asker called so, of whatever day.
    std::optional<Order> find(const QString &clientNumber);
    /// Orders of a day, by number.
    Orders ofDay(TradingDate date);
    Orders ofDay(TradingDate date, const SecurityId &security);
    /// Orders that something may still happen to, the oldest first.
    Orders open();
    Orders open(const SecurityId &security);
    /// Orders of any day, the oldest first.
    Orders ofStatuses(const QStringList &statuses);

    Money cash();
    void setCash(Money cash);
    /// What the user says; see AccountCash.
    void enterCash(Money cash);
    /// Shares that were bought on a day and are not sold on it.
    qint64 boughtOn(TradingDate date, const SecurityId &security);
    /// The same of all securities that were bought then.
    QHash<SecurityId, qint64> boughtOn(TradingDate date);
    /// True when a statement has entries of the security on that day.
    bool isStated(const SecurityId &security, TradingDate date) const;
    Holding holding(const SecurityId &security) { return m_ledger->holding(security); }

private:
    qint64 securityId(const SecurityId &security);
    Orders ordersWhere(const QString &condition, const QVariantList &values);

    Ledger *const m_ledger;
    Database *const m_database;
};

} // namespace TradeModule
