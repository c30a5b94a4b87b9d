#include "trademodule/ledger/StillnessWatch.h"

namespace TradeModule {

namespace {

constexpr std::chrono::seconds longestInterval(3);

} // namespace

bool StillnessWatch::isStill(const QString &sign, Clock::time_point now)
{
    const bool looksAway = now - m_looked > longestInterval;
    m_looked = now;
    if (sign.isEmpty() || sign != m_sign || looksAway) {
        m_sign = sign;
        m_since = now;
        return false;
    }
    return now - m_since > m_longest;
}

} // namespace TradeModule
