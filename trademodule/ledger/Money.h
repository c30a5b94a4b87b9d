#pragma once

#include <QString>
#include <QtGlobal>

#include <cmath>
#include <optional>

namespace TradeModule {

/// An amount of yuan, a price included: a whole number of steps of 0.0001, so that sums are exact.
class Money
{
public:
    static constexpr qint64 StepsPerYuan = 10000;

    constexpr Money() = default;
    static constexpr Money ofSteps(qint64 steps)
    {
        Money money;
        money.m_steps = steps;
        return money;
    }

    /// Rounded to the nearest step; nothing for what is no number or beyond 100 billion yuan.
    static std::optional<Money> ofYuan(double yuan)
    {
        constexpr double Limit = 1e11;
        if (!(std::fabs(yuan) <= Limit)) {
            return std::nullopt;
        }
        return ofSteps(std::llround(yuan * static_cast<double>(StepsPerYuan)));
    }

    constexpr qint64 steps() const { return m_steps; }
    constexpr double yuan() const { return static_cast<double>(m_steps) / static_cast<double>(StepsPerYuan); }
    constexpr bool isZero() const { return m_steps == 0; }
    constexpr bool isNegative() const { return m_steps < 0; }

    /// Decimal text with two decimals, or as many as the value has: "10.50", "7.363".
    QString text() const
    {
        QString digits = QString::number(yuan(), 'f', 4);
        while (digits.endsWith(QLatin1Char('0')) &&
               digits.lastIndexOf(QLatin1Char('.')) < digits.size() - 3) {
            digits.chop(1);
        }
        return digits;
    }

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

inline Money magnitude(Money money)
{
    return money.isNegative() ? -money : money;
}

} // namespace TradeModule
