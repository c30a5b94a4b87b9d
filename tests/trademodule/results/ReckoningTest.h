#pragma once

#include "trademodule/results/SecurityReckoning.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace TradeModule {

using AccountEvents = std::vector<AccountEvent>;

inline Money yuan(double amount)
{
    return Money::ofYuan(amount).value();
}

inline AccountEvent event(EventKind kind, qint64 quantity = 0, Money amount = {}, double fee = 0)
{
    AccountEvent event{kind, TradingDate::first()};
    event.quantity = quantity;
    event.amount = amount;
    event.fee = yuan(fee);
    return event;
}

inline AccountEvent traded(EventKind kind, qint64 quantity, double price, double fee)
{
    AccountEvent trade = event(kind, quantity, yuan(price).times(quantity).value(), fee);
    trade.price = yuan(price);
    return trade;
}

inline AccountEvent buy(qint64 quantity, double price, double fee = 0)
{
    return traded(EventKind::Buy, quantity, price, fee);
}

inline AccountEvent sell(qint64 quantity, double price, double fee = 0)
{
    return traded(EventKind::Sell, quantity, price, fee);
}

inline AccountEvent bonus(qint64 quantity)
{
    return event(EventKind::Bonus, quantity);
}

inline AccountEvent merger(qint64 quantity)
{
    return event(EventKind::Merger, quantity);
}

inline AccountEvent in(qint64 quantity, double cost)
{
    return event(EventKind::In, quantity, yuan(cost));
}

inline AccountEvent out(qint64 quantity)
{
    return event(EventKind::Out, quantity);
}

inline AccountEvent dividend(double amount)
{
    return event(EventKind::Dividend, 0, yuan(amount));
}

inline AccountEvent tax(double amount)
{
    return event(EventKind::Tax, 0, yuan(amount));
}

/// All that a reckoning tells.
struct Reckoned : ResultsVisitor
{
    /// One event on each day from the calendar's first on.
    Reckoned(CostMethod method, const AccountEvents &events) : reckoning(method, this)
    {
        TradingDate day = TradingDate::first();
        for (AccountEvent event : events) {
            event.date = day;
            reckoning.add(event);
            day = day.plusDays(1);
        }
        reckoning.finish();
    }

    void visitSale(const Sale &sale) override { sales.push_back(sale); }
    void visitTrip(const Trip &trip) override { trips.push_back(trip); }
    void book(TradingDate day, const Figures &figures) override
    {
        days.push_back(day);
        booked += figures;
    }

    std::vector<std::string> profits() const
    {
        std::vector<std::string> texts;
        for (const Sale &sale : sales) {
            texts.push_back(sale.profit.digits());
        }
        return texts;
    }

    SecurityReckoning reckoning;
    std::vector<Sale> sales;
    std::vector<Trip> trips;
    std::vector<TradingDate> days;
    Figures booked;
};

} // namespace TradeModule
