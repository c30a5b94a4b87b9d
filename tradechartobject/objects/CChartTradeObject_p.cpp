#include "tradechartobject/objects/CChartTradeObject_p.h"

#include "tradechartobject/common/BarTime.h"

#include <algorithm>

namespace TradeChart {

namespace {

std::size_t firstBarNotBefore(std::int64_t time, const TimedBars &bars, std::size_t from)
{
    const std::int64_t *const end = bars.times + bars.count;
    const std::int64_t *const found = std::find_if(bars.times + std::min(from, bars.count), end,
                                                   [time](std::int64_t bar) { return bar >= time; });
    return static_cast<std::size_t>(found - bars.times);
}

bool isOnSide(const trade_cj &trade, TradeMarker kind)
{
    switch (kind) {
    case TradeMarker::Both:
        return true;
    case TradeMarker::Buys:
        return trade.isBuy;
    case TradeMarker::Sells:
        return !trade.isBuy;
    case TradeMarker::None:
        break;
    }
    return false;
}

template <class Condition>
void removeIf(std::vector<trade_cj> &trades, Condition condition)
{
    trades.erase(std::remove_if(trades.begin(), trades.end(), condition), trades.end());
}

} // namespace

void markTrades(const std::vector<trade_cj> &trades, const TimedBars &bars, const TradeMarks &above,
                const TradeMarks &below)
{
    std::size_t bar = trades.empty() ? bars.count : firstBarNotBefore(trades.front().matchTime, bars, 0);
    for (const trade_cj &trade : trades) {
        if (bar < bars.count && trade.matchTime > bars.times[bar]) {
            mergeSides(above, bar);
            mergeSides(below, bar);
            bar = firstBarNotBefore(trade.matchTime, bars, bar + 1);
        }
        if (bar >= bars.count) {
            return;
        }
        const TradeMarks &marks = bars.records[bar].close > trade.matchPrice ? below : above;
        (trade.isBuy ? marks.buys : marks.sells)[bar] = marked;
    }
}

void dropTodays(std::vector<trade_cj> &trades, std::int64_t today)
{
    removeIf(trades,
             [start = dateTime(today, 0)](const trade_cj &trade) { return trade.matchTime >= start; });
}

void dropPast(std::vector<trade_cj> &trades, std::int64_t today)
{
    removeIf(trades, [start = dateTime(today, 0)](const trade_cj &trade) { return trade.matchTime < start; });
}

bool isListed(const trade_cj &trade, const ClickedMarker &marker)
{
    const bool isOnPart = marker.isAbove ? trade.matchPrice >= marker.close : trade.matchPrice < marker.close;
    return isOnPart && isOnSide(trade, marker.kind) && marker.from <= trade.matchTime &&
           trade.matchTime <= marker.to;
}

} // namespace TradeChart
