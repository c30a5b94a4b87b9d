#include "trademodule/ledger/MarketDay.h"

#include "trademodule/ledger/ColumnValue.h"
#include "trademodule/ledger/Transaction.h"

#include <algorithm>

namespace TradeModule {

namespace {

constexpr int mostSecurities = 20000; // of a day

} // namespace

MarketDay::MarketDay(Ledger *ledger) : m_ledger(ledger)
{
    read();
}

void MarketDay::read()
{
    Database *database = m_ledger->database();
    Rows clock = database->run(QStringLiteral("SELECT quote_date, quote_time FROM exchange_clock"));
    if (clock.next()) {
        m_date = TradingDate::ofNumber(clock.value(0).toInt()); // 0 before the first quote
        m_time = ClockTime::ofNumber(clock.value(1).toInt()).value_or(ClockTime());
    }
    catchUpWithPractice();
    Rows rows =
        database->run(QStringLiteral("SELECT s.code, s.market, r.price, r.quote_time FROM price_reference r "
                                     "JOIN security s ON s.id = r.security_id WHERE r.quote_date = ?"),
                      {m_date ? m_date->number() : 0});
    while (rows.next()) {
        const SecurityId security{rows.value(0).toString(), ColumnValue::market(rows.value(1))};
        m_told.insert(security, {ColumnValue::time(rows.value(3)), ColumnValue::money(rows.value(2))});
    }
}

/// The clock is written now and then only: a module that was killed may have dealt later quotes.
void MarketDay::catchUpWithPractice()
{
    const std::optional<TradingDate> day = m_ledger->practisedDay();
    if (!day) {
        return;
    }
    Rows latest = m_ledger->database()->run(
        QStringLiteral(
            "SELECT MAX(t) FROM (SELECT MAX(order_time) AS t FROM trade_order WHERE order_date = ? "
            "UNION ALL SELECT MAX(trade_time) FROM execution WHERE trade_date = ?) AS latest"),
        {day->number(), day->number()});
    if (latest.next() && !latest.value(0).isNull()) {
        m_time = std::max(clock().value_or(ClockTime()), ColumnValue::time(latest.value(0)));
        m_date = day;
    }
}

void MarketDay::note(const SecurityId &security, ClockTime time, Money open, Money previousClose)
{
    if (m_date != m_ledger->today()) {
        m_date = m_ledger->today();
        m_told.clear();
        m_changed.clear();
        m_hasNewReference = false;
        m_isClockNew = true;
    }
    m_isClockNew = m_isClockNew || m_time != time;
    m_time = time;
    if (m_told.size() >= mostSecurities && !m_told.contains(security)) {
        return;
    }
    Told &told = m_told[security];
    const bool beginsDay = told.reference.isZero() || time < told.time;
    const Money otherwise = beginsDay ? open : told.reference;
    const Money reference = previousClose.isZero() ? otherwise : previousClose;
    m_hasNewReference = m_hasNewReference || reference != told.reference;
    if (reference != told.reference || previousClose.isZero()) { // else its time never matters
        m_changed.insert(security);
    }
    told = {time, reference};
}

void MarketDay::keep()
{
    if (!m_date || (!m_isClockNew && !hasNewReference())) {
        return;
    }
    Database *database = m_ledger->database();
    Transaction transaction(database);
    database->run(QStringLiteral("UPDATE exchange_clock SET quote_date = ?, quote_time = ?"),
                  {m_date->number(), m_time.number()});
    for (const SecurityId &security : qAsConst(m_changed)) {
        database->run(
            QStringLiteral("INSERT INTO price_reference (security_id, quote_date, price, quote_time) "
                           "VALUES (?, ?, ?, ?) ON CONFLICT (security_id) DO UPDATE SET quote_date = "
                           "excluded.quote_date, price = excluded.price, quote_time = excluded.quote_time"),
            {m_ledger->registerSecurity(security, QString()), m_date->number(),
             m_told.value(security).reference.steps(), m_told.value(security).time.number()});
    }
    transaction.commit();
    m_isClockNew = false;
    m_hasNewReference = false;
    m_changed.clear();
}

std::optional<ClockTime> MarketDay::clock() const
{
    return m_date == m_ledger->today() ? std::optional(m_time) : std::nullopt;
}

std::optional<Money> MarketDay::reference(const SecurityId &security) const
{
    const auto told = m_told.constFind(security);
    const bool isKnown = m_date == m_ledger->today() && told != m_told.constEnd();
    return isKnown ? std::optional(told->reference) : std::nullopt;
}

} // namespace TradeModule
