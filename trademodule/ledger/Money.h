#pragma once

#include <QString>
#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <string>

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

    /// Decimal digits with two decimals, or as many as the value has: "10.50", "7.363".
    std::string digits() const
    {
        constexpr size_t Decimals = 4;
        constexpr size_t LeastDecimals = 2;
        std::string digits = std::to_string(std::llabs(m_steps));
        digits.insert(0, Decimals + 1 - std::min(Decimals + 1, digits.size()), '0');
        const size_t point = digits.size() - Decimals;
        while (digits.back() == '0' && digits.size() > point + LeastDecimals) {
            digits.pop_back();
        }
        digits.insert(point, 1, '.');
        return isNegative() ? '-' + digits : digits;
    }
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

inline Money magnitude(Money money)
{
    return money.isNegative() ? -money : money;
}

} // namespace TradeModule
