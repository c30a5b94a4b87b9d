#include "trademodule/exchange/OrderReplacements.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/exchange/OrderLife.h"
#include "trademodule/exchange/TradingRules.h"

#include <algorithm>

namespace TradeModule {

namespace {

bool isSameWish(const Replacement &a, const Replacement &b)
{
    return a.orderNumber == b.orderNumber && a.price == b.price;
}

/// What is left of an order, as one of today.
Order restOf(const Order &old, qint64 quantity, Money price, const OrderReplacements::Market &market)
{
    Order fresh{old.security, old.direction, market.today, market.now};
    fresh.price = price;
    fresh.quantity = quantity;
    fresh.status = OrderLife::statusWhenPlaced(market.isOpen(old.security));
    fresh.securityName = old.securityName; // by which its limits are known
    return fresh;
}

Orders without(Orders orders, qint64 number)
{
    orders.erase(std::remove_if(orders.begin(), orders.end(),
                                [number](const Order &order) { return order.number == number; }),
                 orders.end());
    return orders;
}

} // namespace

std::optional<Replacement> OrderReplacements::askedBefore(const Replacement &asked)
{
    const std::optional<Replacement> before = m_book->replacements().find(asked.clientNumber);
    if (before && !isSameWish(*before, asked)) {
        throw Error(translated("the client's number \"%1\" is that of another replacement, of order %2")
                        .arg(asked.clientNumber)
                        .arg(before->orderNumber));
    }
    if (!before && m_book->replacements().findWaiting(asked.orderNumber)) {
        throw Error(translated("order %1 is being replaced already").arg(asked.orderNumber));
    }
    return before;
}

void OrderReplacements::begin(const Replacement &asked, const Order &old, const Market &market)
{
    if (asked.price == old.price) {
        throw Error(translated("order %1 has the price %2 already").arg(old.number).arg(old.price.text()));
    }
    refuse(restOf(old, old.openQuantity(), asked.price, market), without(m_book->open(), old.number), market);
    m_book->replacements().add(asked);
}

/// The rest of an odd sell is as odd as what was allowed.
void OrderReplacements::refuse(const Order &fresh, const Orders &open, const Market &market)
{
    const QString wrong = TradingRules::formError(fresh, fresh.quantity);
    if (!wrong.isEmpty()) {
        throw Error(wrong);
    }
    if (market.isBeyondLimits(fresh)) {
        throw Error(translated("the price %1 is beyond the limits of the day").arg(fresh.price.text()));
    }
    m_cover->refuseUncovered(fresh, open);
}

Orders OrderReplacements::complete(const Orders &changed, const Market &market)
{
    Orders placed;
    for (const Order &order : changed) {
        std::optional<Replacement> waiting =
            order.openQuantity() == 0 ? m_book->replacements().findWaiting(order.number) : std::nullopt;
        if (!waiting) {
            continue;
        }
        if (const std::optional<Order> fresh = placeRest(order, &*waiting, market)) {
            placed.append(*fresh);
        }
        m_book->replacements().update(*waiting);
    }
    return placed;
}

std::optional<Order> OrderReplacements::placeRest(const Order &ended, Replacement *replacement,
                                                  const Market &market)
{
    if (ended.cancelledQuantity == 0) {
        replacement->state = ReplacementState::Dealt;
        return std::nullopt;
    }
    try {
        if (ended.date != market.today) {
            throw Error(translated("the day of order %1 is over").arg(ended.number));
        }
        Order fresh = restOf(ended, ended.cancelledQuantity, replacement->price, market);
        refuse(fresh, m_book->open(), market);
        fresh.number = m_book->add(fresh);
        replacement->state = ReplacementState::Placed;
        replacement->newOrderNumber = fresh.number;
        return fresh;
    } catch (const LedgerError &) {
        throw;
    } catch (const Error &error) {
        replacement->state = ReplacementState::Failed;
        replacement->reason = error.reason();
        return std::nullopt;
    }
}

} // namespace TradeModule
