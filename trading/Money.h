#pragma once

#include <QString>

#include <optional>
#include <string>

namespace Trading {

/// An amount of yuan, a price included: a whole number of steps of 0.0001, so that sums are exact. What comes
/// from outside is made within a limit; there is room for thousands of such amounts in a sum.
class Money
{
public:
    static constexpr qint64 stepsPerYuan = 10000;

    constexpr Money() = default; ///< nothing
    static constexpr Money ofSteps(qint64 steps)
    {
        Money money;
        money.m_steps = steps;
        return money;
    }

    static constexpr Money ofCents(qint64 cents) { return ofSteps(cents * (stepsPerYuan / 100)); }

    /// 100 billion yuan: no price, amount or account comes to more, nor to less below zero.
    static constexpr Money limit() { return ofSteps(100000000000 * stepsPerYuan); }

    /// Rounded to the nearest step; nothing for what is no number or beyond the limit.
    static std::optional<Money> ofYuan(double yuan);

    /// The same, but nothing for what lies between two steps: a price that was typed is not to be changed.
    static std::optional<Money> ofExactYuan(double yuan);

    constexpr qint64 steps() const { return m_steps; }
    constexpr double yuan() const { return static_cast<double>(m_steps) / static_cast<double>(stepsPerYuan); }
    constexpr bool isZero() const { return m_steps == 0; }
    constexpr bool isNegative() const { return m_steps < 0; }
    constexpr bool isWithinLimit() const { return m_steps <= limit().m_steps && m_steps >= -limit().m_steps; }

    /// So many times the amount; nothing beyond the limit.
    std::optional<Money> times(qint64 count) const;

    /// Decimal digits with two decimals, or as many as the value has: "10.50", "7.363". So prices and amounts
    /// stand in messages.
    std::string digits() const;
    QString text() const { return QString::fromStdString(digits()); }

    friend constexpr Money operator+(Money a, Money b) { return ofSteps(a.m_steps + b.m_steps); }
    friend constexpr Money operator-(Money a, Money b) { return ofSteps(a.m_steps - b.m_steps); }
    friend constexpr Money operator-(Money a) { return ofSteps(-a.m_steps); }
    friend constexpr bool operator==(Money a, Money b) { return a.m_steps == b.m_steps; }
    friend constexpr bool operator!=(Money a, Money b) { return a.m_steps != b.m_steps; }
    friend constexpr bool operator<(Money a, Money b) { return a.m_steps < b.m_steps; }
    friend constexpr bool operator>(Money a, Money b) { return b < a; }

private:
    qint64 m_steps = 0;
};

constexpr Money magnitude(Money money)
{
    return money.isNegative() ? -money : money;
}

} // namespace Trading
