#include "trademodule/ledger/ToldMinutes.h"

#include "trademodule/ledger/ColumnValue.h"

namespace TradeModule {

using Trading::Quote;

std::vector<Quote> ToldMinutes::ofDay(TradingDate day)
{
    Rows rows = m_ledger->database()->run(
        QStringLiteral(
            "SELECT s.code, s.market, m.quote_time, m.high, m.low, m.close, m.volume, m.recorded FROM "
            "told_minute m JOIN security s ON s.id = m.security_id WHERE m.quote_date = ? ORDER BY "
            "m.quote_time"),
        {day.number()});
    std::vector<Quote> quotes;
    while (rows.next()) {
        Quote quote{{rows.value(0).toString(), ColumnValue::market(rows.value(1))},
                    day,
                    ColumnValue::time(rows.value(2))};
        quote.high = ColumnValue::money(rows.value(3));
        quote.low = ColumnValue::money(rows.value(4));
        quote.close = quote.open = ColumnValue::money(rows.value(5));
        quote.volume = rows.value(6).toLongLong();
        quote.recorded = TradingDate::ofNumber(rows.value(7).toInt()); // 0: of the market
        quotes.push_back(quote);
    }
    return quotes;
}

void ToldMinutes::write(const Quote &quote)
{
    m_ledger->database()->run(
        QStringLiteral(
            "INSERT INTO told_minute (security_id, quote_date, quote_time, high, low, close, volume, "
            "recorded) VALUES (?, ?, ?, ?, ?, ?, ?, ?) ON CONFLICT (security_id) DO UPDATE SET "
            "quote_date = excluded.quote_date, quote_time = excluded.quote_time, high = excluded.high, "
            "low = excluded.low, close = excluded.close, volume = excluded.volume, "
            "recorded = excluded.recorded"),
        {m_ledger->registerSecurity(quote.security, QString()), quote.date.number(), quote.time.number(),
         quote.high.steps(), quote.low.steps(), quote.close.steps(), quote.volume,
         quote.recorded ? quote.recorded->number() : 0});
}

} // namespace TradeModule
