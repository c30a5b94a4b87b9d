#pragma once

#include <QtGlobal>

#include <optional>
#include <string_view>

namespace Terminal {

/// A decimal number as a whole number of steps of 0.00000001: "0.2992855" is 29928550. Nothing for what is no
/// plain decimal number, has more decimals, or more than six digits before its point. "-0.5" is one.
std::optional<qint64> decimalSteps(std::string_view text);

/// So much for each share, exactly: a whole number of steps of 0.00000001 of its unit. Companies announce for
/// ten shares, and their figures have up to six decimals where some shares receive nothing.
template <typename Unit>
class PerShare
{
public:
    static constexpr qint64 stepsPerUnit = 100000000;

    constexpr PerShare() = default; ///< nothing
    static constexpr PerShare ofSteps(qint64 steps)
    {
        PerShare amount;
        amount.m_steps = steps;
        return amount;
    }

    constexpr qint64 steps() const { return m_steps; }
    constexpr bool isZero() const { return m_steps == 0; }

    friend constexpr PerShare operator+(PerShare a, PerShare b) { return ofSteps(a.m_steps + b.m_steps); }
    friend constexpr bool operator==(PerShare a, PerShare b) { return a.m_steps == b.m_steps; }
    friend constexpr bool operator!=(PerShare a, PerShare b) { return !(a == b); }

private:
    qint64 m_steps = 0;
};

using YuanPerShare = PerShare<struct Yuan>;
using SharesPerShare = PerShare<struct Shares>;

} // namespace Terminal
