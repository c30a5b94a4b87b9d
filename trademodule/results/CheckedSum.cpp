#include "trademodule/results/CheckedSum.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"

#include <algorithm>
#include <limits>

namespace TradeModule {

namespace {

__extension__ using Wide = __int128; // gcc and clang have it, the standard has not

[[noreturn]] void refuse()
{
    throw Error(translated("the sum of the ledger's amounts is too large to be reckoned"));
}

} // namespace

Money checkedSum(Money a, Money b)
{
    return Money::ofSteps(checkedSum(a.steps(), b.steps()));
}

qint64 checkedSum(qint64 a, qint64 b)
{
    qint64 sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) {
        refuse();
    }
    return sum;
}

qint64 proportion(qint64 number, qint64 part, qint64 whole)
{
    const Wide product = Wide(number) * part;
    const Wide half = product < 0 ? -(whole / 2) : whole / 2;
    const Wide most = std::numeric_limits<qint64>::max();
    return static_cast<qint64>(std::clamp((product + half) / whole, -most, most));
}

qint64 proportionRoundedDown(qint64 number, qint64 part, qint64 whole)
{
    return static_cast<qint64>(Wide(number) * part / whole);
}

Money partInCents(Money amount, qint64 part, qint64 whole)
{
    constexpr qint64 stepsPerCent = Money::stepsPerYuan / 100;
    return Money::ofCents(proportion(amount.steps(), part, whole * stepsPerCent));
}

} // namespace TradeModule
