#include "terminal/data/CorporateAction.h"

namespace Terminal {

namespace {

__extension__ using Wide = __int128; // gcc and clang have it, the standard has not

constexpr Wide one = SharesPerShare::stepsPerUnit;

} // namespace

std::optional<double> adjustmentFactor(const CorporateAction &action, Trading::Money closeBefore)
{
    constexpr qint64 stepsOfMoney = YuanPerShare::stepsPerUnit / Trading::Money::stepsPerYuan;
    const Wide close = Wide(closeBefore.steps()) * stepsOfMoney;
    const Wide paidForRights = Wide(action.rights.steps()) * action.rightsPrice.steps();
    const Wide left = (close - action.dividend.steps()) * one + paidForRights;
    const Wide shares = one + action.bonus.steps() + action.rights.steps();
    if (left <= 0 || shares <= 0 || close <= 0) {
        return std::nullopt;
    }
    return static_cast<double>(static_cast<long double>(left) / static_cast<long double>(shares * close));
}

} // namespace Terminal
