#include "trading/Money.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace Trading {

std::optional<Money> Money::ofYuan(double yuan)
{
    if (!(std::fabs(yuan) <= limit().yuan())) {
        return std::nullopt;
    }
    return ofSteps(std::llround(yuan * static_cast<double>(stepsPerYuan)));
}

std::optional<Money> Money::ofExactYuan(double yuan)
{
    constexpr double tolerance = 1e-3; // of a step: what a double cannot tell apart
    const std::optional<Money> money = ofYuan(yuan);
    const double steps = yuan * static_cast<double>(stepsPerYuan);
    const bool isExact = money && std::fabs(steps - static_cast<double>(money->m_steps)) < tolerance;
    return isExact ? money : std::nullopt;
}

std::optional<Money> Money::times(qint64 count) const
{
    Money product;
    const bool overflows = __builtin_mul_overflow(m_steps, count, &product.m_steps);
    return overflows || !product.isWithinLimit() ? std::nullopt : std::optional(product);
}

std::string Money::digits() const
{
    constexpr std::size_t decimals = 4;
    constexpr std::size_t leastDecimals = 2;
    std::string digits = std::to_string(std::llabs(m_steps));
    digits.insert(0, decimals + 1 - std::min(decimals + 1, digits.size()), '0');
    const std::size_t point = digits.size() - decimals;
    while (digits.back() == '0' && digits.size() > point + leastDecimals) {
        digits.pop_back();
    }
    digits.insert(point, 1, '.');
    return isNegative() ? '-' + digits : digits;
}

} // namespace Trading
