#include "trademodule/results/Figures.h"

#include "trademodule/results/CheckedSum.h"

namespace TradeModule {

namespace {

constexpr Money Figures::*amounts[] = {&Figures::bought,    &Figures::sold,  &Figures::fees,
                                       &Figures::stampDuty, &Figures::cost,  &Figures::profit,
                                       &Figures::dividends, &Figures::taxes, &Figures::interest};

} // namespace

Money Figures::total() const
{
    return checkedSum(checkedSum(profit, interest), checkedSum(dividends, -taxes));
}

Figures &Figures::operator+=(const Figures &other)
{
    sales += other.sales;
    for (const auto amount : amounts) {
        this->*amount = checkedSum(this->*amount, other.*amount);
    }
    return *this;
}

qint64 basisPoints(Money profit, Money cost)
{
    constexpr qint64 whole = 10000;
    return cost > Money() ? proportion(profit.steps(), whole, cost.steps()) : 0;
}

} // namespace TradeModule
