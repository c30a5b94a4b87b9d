#include "trademodule/exchange/OrderCover.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/exchange/TradingRules.h"

#include <algorithm>

namespace TradeModule {

namespace {

/// What is left of an open buy costs at most: an order in parts pays the fees that it would have paid in one.
Money reserveOf(const Order &order)
{
    // an older program may have let a larger one in: it claims all that there can be
    const Money amount = order.price.times(order.openQuantity()).value_or(Money::limit());
    return amount + TradingRules::fees(Direction::Buy, order.matchedAmount + amount) -
           TradingRules::fees(Direction::Buy, order.matchedAmount);
}

} // namespace

/// An order of a past day claims nothing, though its end may not be written yet.
bool OrderCover::isOfToday(const Order &order) const
{
    return !(order.date < m_book->today());
}

qint64 OrderCover::sellable(const SecurityId &security, const Orders &open)
{
    return sellable(security, m_book->holding(security).quantity(),
                    m_book->boughtOn(m_book->today(), security), open);
}

qint64 OrderCover::notOnOffer(const SecurityId &security, const Orders &open)
{
    return sellable(security, m_book->holding(security).quantity(), 0, open);
}

qint64 OrderCover::sellable(const SecurityId &security, qint64 held, qint64 boughtToday, const Orders &open)
{
    qint64 available = held - boughtToday;
    for (const Order &order : open) {
        if (isOfToday(order) && order.direction == Direction::Sell && order.security == security) {
            available -= order.openQuantity();
        }
    }
    return std::max<qint64>(available, 0);
}

Money OrderCover::spendable(const Orders &open)
{
    Money available = m_book->cash();
    for (const Order &order : open) {
        if (isOfToday(order) && order.direction == Direction::Buy) {
            available = available - reserveOf(order);
        }
    }
    return available;
}

void OrderCover::refuseUncovered(const Order &order, const Orders &open)
{
    switch (order.direction) {
    case Direction::Buy:
        refuseUncoveredBuy(order, open);
        return;
    case Direction::Sell:
        refuseUncoveredSell(order, open);
        return;
    }
}

void OrderCover::refuseUncoveredSell(const Order &order, const Orders &open)
{
    const qint64 available = sellable(order.security, open);
    if (order.quantity > available) {
        throw Error(translated("%1 shares may be sold: what was bought today or is on offer already does "
                               "not count")
                        .arg(available));
    }
}

void OrderCover::refuseUncoveredBuy(const Order &order, const Orders &open)
{
    const Money amount = order.price.times(order.quantity).value();
    const Money needed = amount + TradingRules::fees(Direction::Buy, amount);
    const Money available = spendable(open);
    if (needed > available) {
        throw Error(translated("the order needs %1 yuan with its fees, there are %2")
                        .arg(needed.text(), available.text()));
    }
}

} // namespace TradeModule
