// Bar times: the host packs the time of a bar into one word; the overlays use sortable numbers.
//
// A date-time is yyyymmddhhmmss as a 64-bit integer, its trading day is yyyymmdd.
#pragma once

#include "tradechartobject/ChartInterface.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace TradeChart {

/// True for the periods whose bars carry a packed minute stamp.
bool isMinutePeriod(Korvane::Period period);

/// True for the periods whose bars carry a date.
bool isDayPeriod(Korvane::Period period);

/// The date-time of a day, yyyymmdd, and a time, hhmmss.
constexpr std::int64_t dateTime(std::int64_t day, std::int64_t time)
{
    return day * 1000000 + time;
}

/// yyyymmdd of a date-time.
constexpr std::int64_t tradingDay(std::int64_t dateTime)
{
    return dateTime / 1000000;
}

/// Date-time of a bar of a day period: the last second of its day.
constexpr std::int64_t dayBarTime(std::uint32_t date)
{
    return dateTime(static_cast<std::int32_t>(date), 235959);
}

/// Number of bars that a host's `count` stands for: none below zero or without `bars`.
inline std::size_t usableBarCount(const Korvane::AnalyData *bars, int count)
{
    return bars == nullptr || count < 0 ? 0 : static_cast<std::size_t>(count);
}

/// Date-time of a bar: its minute with second 00 for minute periods, the last second of its day for day
/// periods, 0 for periods of neither kind.
std::int64_t barTime(const Korvane::AnalyData &bar, Korvane::Period period);

/// Replaces `times` by the date-times of the usable bars, in the bars' order.
void decodeBarTimes(const Korvane::AnalyData *bars, int count, Korvane::Period period,
                    std::vector<std::int64_t> &times);

/// The same, with the bars' ends from the same walk: the host's bars may be many.
void decodeBars(const Korvane::AnalyData *bars, int count, Korvane::Period period,
                std::vector<std::int64_t> &times, std::vector<double> &highs, std::vector<double> &lows);

} // namespace TradeChart
