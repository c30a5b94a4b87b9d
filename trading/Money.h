#pragma once

#include <QString>

#include <optional>
#include <string>

namespace Trading {

/// An amount of yuan, a price included: a whole number of steps of 0.0001, so that sums are exact.
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

    /// Rounded to the nearest step; nothing for what is no number or beyond 100 billion yuan.
    static std::optional<Money> ofYuan(double yuan);

    constexpr qint64 steps() const { return m_steps; }
    constexpr double yuan() const { return static_cast<double>(m_steps) / static_cast<double>(stepsPerYuan); }
    constexpr bool isZero() const { return m_steps == 0; }
    constexpr bool isNegative() const { return m_steps < 0; }

    /// Decimal digits with two decimals, or as many as the value has: "10.50", "7.363". So prices and amounts
    /// stand in messages.
    std::string digits() const;
    QString text() const { return QString::fromStdString(digits()); }

    friend constexpr Money operator+(Money a, Money b) { return ofSteps(a.m_steps + b.m_steps); }
    friend constexpr Money operator-(Money a, Money b) { return ofSteps(a.m_steps - b.m_steps); }
    friend constexpr Money operator-(Money a) { return ofSteps(-a.m_steps); }
    friend constexpr Money operator*(Money price, qint64 quantity)
    {
        return ofSteps(price.m_steps * quantity);
    }
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
