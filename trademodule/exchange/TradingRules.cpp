#include "trademodule/exchange/TradingRules.h"
#include "trademodule/ProgramLanguage.h"
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

bool isOpen(ClockTime time)
{
    constexpr ClockTime morning[] = {ClockTime::of(9, 15).value(), ClockTime::of(11, 30).value()};
    constexpr ClockTime afternoon[] = {ClockTime::of(13, 0).value(), ClockTime::of(15, 0).value()};
    return (time >= morning[0] && time <= morning[1]) || (time >= afternoon[0] && time <= afternoon[1]);
}

bool isTradingDay(TradingDate day)
{
    return day.calendarDate().dayOfWeek() <= Qt::Friday;
}

QString formError(const Order &order, qint64 held)
{
    if (!Trading::isExchangeCode(order.security.code)) {
        return translated("the code of a security has six digits");
    }
    if (!(order.price > Money()) || order.price.steps() % Trading::priceStep.steps() != 0) {
        return translated("the price must be a multiple of 0.01 yuan");
    }
    if (order.price > Trading::highestPrice) {
        return translated("the price must be at most %1 yuan").arg(Trading::highestPrice.text());
    }
    if (order.quantity > Trading::mostShares) {
        return translated("the quantity must be at most %1").arg(Trading::mostShares);
    }
    if (!order.price.times(order.quantity)) {
        return translated("price × quantity must be at most %1 yuan").arg(Money::limit().text());
    }
    const bool sellsRest = order.direction == Direction::Sell && order.quantity == held;
    if (order.quantity <= 0 || (order.quantity % Trading::sharesOfLot != 0 && !sellsRest)) {
        return translated("the quantity must be a multiple of %1").arg(Trading::sharesOfLot);
    }
    return {};
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
