#include "trademodule/ledger/AccountCash.h"

#include "trademodule/ledger/ColumnValue.h"

namespace TradeModule {

Money AccountCash::amount()
{
    Rows row = m_database->run(QStringLiteral("SELECT cash FROM account"));
    row.next();
    return ColumnValue::money(row.value(0));
}

void AccountCash::change(Money amount)
{
    m_database->run(QStringLiteral("UPDATE account SET cash = ?"), {amount.steps()});
}

void AccountCash::enter(Money amount)
{
    m_database->run(QStringLiteral("UPDATE account SET cash = ?, stated_cash = 0, "
                                   "entered_after = (SELECT COALESCE(MAX(id), 0) FROM statement)"),
                    {amount.steps()});
}

void AccountCash::take(qint64 number, const StatedCash &cash)
{
    m_database->run(QStringLiteral("UPDATE statement SET balance = ?, balance_date = ?, balance_time = ?, "
                                   "own_cash = ? WHERE id = ?"),
                    {cash.balance.steps(), cash.date.number(), cash.time.number(),
                     (amount() - statedPart()).steps(), number});
    reckon();
}

void AccountCash::reckon()
{
    const Money own = amount() - statedPart();
    const Money stated = newestStatedPart();
    m_database->run(QStringLiteral("UPDATE account SET cash = ?, stated_cash = ?"),
                    {(own + stated).steps(), stated.steps()});
}

/// What the cash owes to balances.
Money AccountCash::statedPart()
{
    Rows row = m_database->run(QStringLiteral("SELECT stated_cash FROM account"));
    row.next();
    return ColumnValue::money(row.value(0));
}

Money AccountCash::newestStatedPart()
{
    Rows row = m_database->run(
        QStringLiteral("SELECT s.balance, s.own_cash, s.id > a.entered_after FROM statement s, account a "
                       "WHERE s.balance IS NOT NULL "
                       "ORDER BY s.balance_date DESC, s.balance_time DESC, s.id DESC LIMIT 1"));
    const bool counts = row.next() && row.value(2).toBool();
    return counts ? ColumnValue::money(row.value(0)) - ColumnValue::money(row.value(1)) : Money();
}

} // namespace TradeModule
