#include "tradechartobject/common/BarTime.h"

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

/// Calls take(index, date-time) for every bar. The kind of period is the same for all: asked once.
template <class Take>
void forEachTime(const Korvane::AnalyData *bars, std::size_t count, Korvane::Period period, Take take)
{
    const auto walk = [&](auto timeOf) {
        for (std::size_t bar = 0; bar < count; ++bar) {
            take(bar, timeOf(bars[bar].time));
        }
    };
    if (isMinutePeriod(period)) {
        walk(minuteStampTime);
    } else if (isDayPeriod(period)) {
        walk(dayBarTime);
    } else {
        walk([](std::uint32_t) { return std::int64_t{0}; });
    }
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

std::int64_t barTime(const Korvane::AnalyData &bar, Korvane::Period period)
{
    std::int64_t time = 0;
    forEachTime(&bar, 1, period, [&time](std::size_t, std::int64_t decoded) { time = decoded; });
    return time;
}

void decodeBarTimes(const Korvane::AnalyData *bars, int count, Korvane::Period period,
                    std::vector<std::int64_t> &times)
{
    times.resize(usableBarCount(bars, count));
    forEachTime(bars, times.size(), period,
                [time = times.data()](std::size_t bar, std::int64_t decoded) { time[bar] = decoded; });
}

void decodeBars(const Korvane::AnalyData *bars, int count, Korvane::Period period,
                std::vector<std::int64_t> &times, std::vector<double> &highs, std::vector<double> &lows)
{
    const std::size_t barCount = usableBarCount(bars, count);
    times.resize(barCount);
    highs.resize(barCount);
    lows.resize(barCount);
    forEachTime(bars, barCount, period,
                [=, time = times.data(), high = highs.data(), low = lows.data()](std::size_t bar,
                                                                                 std::int64_t decoded) {
                    time[bar] = decoded;
                    high[bar] = bars[bar].high;
                    low[bar] = bars[bar].low;
                });
}

} // namespace TradeChart
