#include "trademodule/exchange/TradingRules.h"

#include "trademodule/ProgramLanguage.h"
#include "trading/MarketRules.h"
#include "trading/TradingUnits.h"

#include <algorithm>

namespace TradeModule::TradingRules {

namespace {

/// So many hundred-thousandths of an amount in whole cents, half up. Whole numbers: a binary fraction would
/// round many a half cent down.
Money share(Money amount, qint64 hundredThousandths)
{
    const qint64 whole = 100000 * Money::ofCents(1).steps();
    return Money::ofCents((amount.steps() * hundredThousandths + whole / 2) / whole);
}

} // namespace

namespace {

QString quantityError(const Order &order, qint64 held, const Trading::SecurityRules &rules)
{
    const bool isAllowed = order.direction == Direction::Sell ? rules.isSaleQuantity(order.quantity, held)
                                                              : rules.isWholeQuantity(order.quantity);
    if (isAllowed) {
        return {};
    }
    return rules.quantityStep == 1
               ? translated("the quantity must be at least %1").arg(rules.leastQuantity)
               : translated("the quantity must be a multiple of %1").arg(rules.quantityStep);
}

} // namespace

bool isOpen(const SecurityId &security, TradingDate day, ClockTime time, bool isQuoted,
            const Trading::TradingCalendar &calendar)
{
    using namespace Trading;
    return takesOrders(isQuoted ? MarketRules::stateOnTradingDay(security, day, time)
                                : MarketRules::stateAt(security, day, time, calendar));
}

QString formError(const Order &order, qint64 held)
{
    if (!Trading::isExchangeCode(order.security.code)) {
        return translated("the code of a security has six digits");
    }
    const Trading::SecurityRules rules = Trading::MarketRules::of(order.security, order.date);
    if (!(order.price > Money()) || !rules.isOnTick(order.price)) {
        return translated("the price must be a multiple of %1 yuan").arg(rules.tick.text());
    }
    if (order.price > Trading::highestPrice) {
        return translated("the price must be at most %1 yuan").arg(Trading::highestPrice.text());
    }
    if (order.quantity > rules.mostQuantity) {
        return translated("the quantity must be at most %1").arg(rules.mostQuantity);
    }
    if (!order.price.times(order.quantity)) {
        return translated("price × quantity must be at most %1 yuan").arg(Money::limit().text());
    }
    return quantityError(order, held, rules);
}

Money stampDuty(Direction direction, Money amount)
{
    return direction == Direction::Sell ? share(amount, 50) : Money();
}

Money fees(Direction direction, Money amount)
{
    if (amount.isZero()) {
        return {};
    }
    const Money leastCommission = Money::ofSteps(5 * Money::stepsPerYuan);
    const Money commission = std::max(share(amount, 25), leastCommission);
    return commission + stampDuty(direction, amount) + share(amount, 1);
}

} // namespace TradeModule::TradingRules
