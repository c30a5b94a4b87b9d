#include "trademodule/report/SecurityResults.h"

namespace TradeModule {

void SecurityResults::book(TradingDate day, const Figures &figures)
{
    constexpr int daysOfMonth = 100; // in yyyymmdd
    m_months.try_emplace(day.number() / daysOfMonth, Month{day, {}}).first->second.figures += figures;
}

Figures SecurityResults::figures() const
{
    Figures sum;
    for (const auto &[number, month] : m_months) {
        sum += month.figures;
    }
    return sum;
}

} // namespace TradeModule
