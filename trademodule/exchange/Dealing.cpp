#include "trademodule/exchange/Dealing.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/exchange/TradingRules.h"
#include "trading/MarketRules.h"

#include <algorithm>

namespace TradeModule::Dealing {

namespace {

Money priceOf(const Quote &quote, const Order &order)
{
    return order.direction == Direction::Buy ? std::min(order.price, quote.open)
                                             : std::max(order.price, quote.open);
}

/// A sell may be dealt at a better price than its own, so that its amount is checked anew.
Money amountOf(const Order &order, Money price, qint64 quantity)
{
    const std::optional<Money> amount = price.times(quantity);
    if (!amount || !(order.matchedAmount + *amount).isWithinLimit()) {
        throw Error(translated("price × quantity would be more than %1 yuan").arg(Money::limit().text()));
    }
    return *amount;
}

/// What an order in parts pays of a fee for its next one: in all it pays what it would have paid in one.
Money partOf(Money (*fee)(Direction, Money), const Order &order, Money amount)
{
    return fee(order.direction, order.matchedAmount + amount) - fee(order.direction, order.matchedAmount);
}

} // namespace

qint64 mostShares(const Quote &quote)
{
    constexpr qint64 divisor = 4;
    return quote.volume / divisor;
}

bool reaches(const Quote &quote, const Order &order)
{
    return order.direction == Direction::Buy ? !(quote.low > order.price) : !(quote.high < order.price);
}

qint64 quantity(const Order &order, qint64 atMost)
{
    const qint64 open = order.openQuantity();
    const qint64 step = Trading::MarketRules::of(order.security, order.date).quantityStep;
    return open <= atMost ? open : atMost / step * step;
}

Execution execution(const Order &order, const Quote &quote, qint64 quantity)
{
    Execution execution{order.security, sideOf(order.direction), order.date,
                        quote.time,     priceOf(quote, order),   quantity};
    execution.amount = amountOf(order, execution.price, quantity);
    execution.fee = partOf(&TradingRules::fees, order, execution.amount);
    execution.stampDuty = partOf(&TradingRules::stampDuty, order, execution.amount);
    execution.orderNo = QString::number(order.number);
    execution.dealNo = QStringLiteral("P%1-%2").arg(order.number).arg(order.matchedQuantity + quantity);
    return execution;
}

} // namespace TradeModule::Dealing
