// The pure steps of the buy/sell points: rows of an answer become trades of a day, days become marks on bars,
// and the trades of a day the lines of a list.
#pragma once

#include "tradechartobject/common/AnswerRows.h"
#include "tradechartobject/common/Trade.h"
#include "tradechartobject/common/TradeMarks.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace TradeChart {

/// Trades by day, yyyymmdd; within a day as received.
using TradesByDay = std::map<std::int64_t, std::vector<trade_cj>>;

/// What an answer about today says.
struct TodaysTrades
{
    std::int64_t day; ///< yyyymmdd of the last row: all of them stand under it. -1 without rows
    std::vector<trade_cj> trades;
};

/// Reads the rows of an answer about today: they tell the date and time of the order.
TodaysTrades readTodaysTrades(const AnswerRows &rows);

/// Adds the rows of an answer about the past, which tell the date and time of the trade, to the trades of
/// their days. Nothing is compared with what is held already.
void addPastTrades(const AnswerRows &rows, TradesByDay &trades);

/// Which sides a day holds.
struct DaySides
{
    std::int32_t day; ///< yyyymmdd
    bool hasBuys;
    bool hasSells;
};

/// The days in their order. Marking walks this short list beside the bars.
std::vector<DaySides> sumUpDays(const TradesByDay &trades);

/// Marks the bars on whose days there are trades; marks are only added. `barTimes` are date-times per bar.
/// Requires a mark for every bar.
void markDays(const std::vector<DaySides> &days, const std::vector<std::int64_t> &barTimes,
              const TradeMarks &marks);

/// The lines of a day's trades under a marker, which names the side of all of them unless it stands for both.
/// None without a marker.
std::vector<std::string> listTrades(const std::vector<trade_cj> &trades, TradeMarker marker);

} // namespace TradeChart
