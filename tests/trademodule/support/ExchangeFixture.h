#pragma once

#include "tests/support/ByName.h"
#include "tests/support/LogCapture.h"
#include "tests/support/NearestTick.h"
#include "tests/trademodule/support/LedgerFixture.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/Error.h"
#include "trademodule/exchange/PaperExchange.h"
#include "trademodule/exchange/TradingRules.h"
#include "trading/TradingUnits.h"

namespace TradeModule {

inline Money yuan(double value)
{
    return Money::ofYuan(value).value();
}

/// A bar of the bank's shares that ends at hhmm.
inline Quote bar(int hhmm, double open, double high, double low, qint64 volume = 1000000)
{
    Quote quote{bank(), TradingDate::today(), at(hhmm)};
    quote.open = yuan(open);
    quote.high = yuan(high);
    quote.low = yuan(low);
    quote.close = yuan(open);
    quote.volume = volume;
    return quote;
}

inline qint64 ticks(Money price)
{
    return price.steps() / Trading::priceStep.steps();
}

/// An exchange in the middle of a trading day: the first quote was 10.00 at 10:00.
class PaperExchangeOfADay : public LedgerFixture
{
protected:
    void SetUp() override
    {
        LedgerFixture::SetUp();
        if (IsSkipped()) {
            return;
        }
        m_exchange.emplace(&ledger(),
                           [this](const Order &order) { m_statuses.push_back(order.status.toStdString()); });
        exchange().take(bar(1000, 10, 10, 10));
    }

    PaperExchange &exchange() { return *m_exchange; }

    Order buy(double price, qint64 quantity)
    {
        return exchange().place(bank(), Direction::Buy, yuan(price), quantity);
    }

    Order sell(double price, qint64 quantity)
    {
        return exchange().place(bank(), Direction::Sell, yuan(price), quantity);
    }

    /// Shares that were there before today.
    void hold(qint64 quantity) { book({fill(Side::Buy, bank(), 20240102, 9, quantity)}); }

    Order now(const Order &order) { return OrderBook(&ledger()).find(order.date, order.number).value(); }
    QString statusOf(const Order &order) { return now(order).status; }

    std::string refusalOf(Direction direction, double price, qint64 quantity)
    {
        try {
            exchange().place(bank(), direction, yuan(price), quantity);
        } catch (const Error &error) {
            return error.what();
        }
        return "no refusal";
    }

    std::string refusalOfCancelling(TradingDate date, qint64 number)
    {
        try {
            exchange().cancel(date, number);
        } catch (const Error &error) {
            return error.what();
        }
        return "no refusal";
    }

    void setCash(double cash)
    {
        OrderBook orders(&ledger());
        Transaction transaction = orders.begin();
        orders.setCash(yuan(cash));
        transaction.commit();
    }

    std::vector<std::string> m_statuses; // as the charts were told

private:
    std::optional<PaperExchange> m_exchange;
};

inline QString code(const char *status)
{
    return QString::fromLatin1(status);
}

} // namespace TradeModule
