#include "trading/SecurityRules.h"

#include <algorithm>

namespace Trading {

int SecurityRules::decimals() const
{
    int decimals = 0;
    for (qint64 unit = Money::stepsPerYuan; tick.steps() % unit != 0; unit /= 10) {
        ++decimals;
    }
    return std::max(decimals, 2);
}

Money SecurityRules::nearestTick(Money price) const
{
    const qint64 step = tick.steps();
    return Money::ofSteps((price.steps() + step / 2) / step * step);
}

std::optional<DayLimits> SecurityRules::limits(Money closeBefore) const
{
    if (!limit) {
        return std::nullopt;
    }
    const qint64 step = tick.steps();
    const qint64 close = nearestTick(closeBefore).steps() / step;
    // whole numbers: as a binary fraction, many a half tick would fall short and be rounded down
    const auto part = [close, step](qint64 thousandths) {
        return Money::ofSteps((close * thousandths + 500) / 1000 * step);
    };
    return DayLimits{part(1000 - limit->down), part(1000 + limit->up)};
}

bool SecurityRules::isWholeQuantity(qint64 shares) const
{
    return shares > 0 && wholeQuantity(shares) == shares;
}

bool SecurityRules::isSaleQuantity(qint64 shares, qint64 held) const
{
    const bool leavesWholeSteps = quantityStep > 1 && shares < held && (held - shares) % quantityStep == 0;
    return isWholeQuantity(shares) || (shares > 0 && (shares == held || leavesWholeSteps));
}

qint64 SecurityRules::wholeQuantity(qint64 shares) const
{
    return shares < leastQuantity ? 0 : shares - (shares - leastQuantity) % quantityStep;
}

} // namespace Trading
