#include "tradechartobject/common/BarTime.h"

#include <algorithm>

namespace TradeChart {

namespace {

// One bit for each period number that belongs to the kind.
constexpr std::uint32_t minutePeriods = 0x20008F; // 0, 1, 2, 3, 7, 21
constexpr std::uint32_t dayPeriods = 0xC70;       // 4, 5, 6, 10, 11
constexpr int firstUnknownPeriod = 22;

constexpr int firstStampYear = 2004; // the packed stamp has five bits for the year

bool isOneOf(std::uint32_t periods, int period)
{
    return period >= 0 && period < firstUnknownPeriod && ((periods >> period) & 1U) != 0;
}

/// Bits 27..31 year since 2004, bits 16..26 month * 100 + day, bits 0..15 minutes since midnight.
std::int64_t minuteStampTime(std::uint32_t stamp)
{
    const std::int64_t year = firstStampYear + (stamp >> 27U);
    const std::int64_t monthDay = (stamp >> 16U) & 0x7FFU;
    const std::int64_t minutes = stamp & 0xFFFFU;
    return dateTime(year * 10000 + monthDay, minutes / 60 * 10000 + minutes % 60 * 100);
}

} // namespace

bool isMinutePeriod(Korvane::Period period)
{
    return isOneOf(minutePeriods, period);
}

bool isDayPeriod(Korvane::Period period)
{
    return isOneOf(dayPeriods, period);
}

void decodeBarTimes(const Korvane::AnalyData *bars, int count, Korvane::Period period,
                    std::vector<std::int64_t> &times)
{
    times.resize(usableBarCount(bars, count));
    // The kind of period is the same for all bars: asked once, not per bar.
    const auto decode = [&](auto timeOf) {
        std::transform(bars, bars + times.size(), times.begin(),
                       [&](const Korvane::AnalyData &bar) { return timeOf(bar.time); });
    };
    if (isMinutePeriod(period)) {
        decode(minuteStampTime);
    } else if (isDayPeriod(period)) {
        decode(dayBarTime);
    } else {
        std::fill(times.begin(), times.end(), 0);
    }
}

} // namespace TradeChart
