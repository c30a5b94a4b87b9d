#include "terminal/trades/TradePlaces.h"

#include <algorithm>

namespace Terminal {

namespace {

QDate sundayBefore(Trading::TradingDate day)
{
    const QDate date = day.calendarDate();
    return date.addDays(-date.dayOfWeek());
}

/// True when both days are in the week, or the month, of one bar.
bool isInSpanOf(const Bar &bar, Trading::TradingDate day, ChartPeriod period)
{
    constexpr int daysOfAMonth = 100; // in a number yyyymmdd
    switch (period) {
    case ChartPeriod::Week:
        return sundayBefore(dayOf(bar)) == sundayBefore(day);
    case ChartPeriod::Month:
        return bar.date / daysOfAMonth == day.number() / daysOfAMonth;
    case ChartPeriod::Day:
    case ChartPeriod::Minute:
        return false;
    }
    return false;
}

/// A chart of weeks or months ends with the latest day that it has; the span of that day is not over.
bool isInLastSpan(const ChartData &data, Trading::TradingDate day)
{
    return isInSpanOf(data.bars.back(), day, data.period);
}

/// True when the span that ends with a bar has the day in it.
bool hasDay(const ChartData &data, Bars::const_iterator bar, Trading::TradingDate day)
{
    if (data.period == ChartPeriod::Day || data.period == ChartPeriod::Minute) {
        return bar->date == day.number();
    }
    return bar != data.bars.begin() || isInSpanOf(*bar, day, data.period);
}

} // namespace

std::optional<int> barOf(const ChartData &data, Trading::TradingDate day, Trading::ClockTime time)
{
    const Bars &bars = data.bars;
    const bool hasMinutes = data.period == ChartPeriod::Minute;
    const std::pair<int, int> asked(day.number(), hasMinutes ? time.endMinute() : 0);
    auto found = std::lower_bound(bars.begin(), bars.end(), asked,
                                  [](const Bar &bar, const std::pair<int, int> &wanted) {
                                      return std::make_pair(bar.date, bar.minute) < wanted;
                                  });
    if (!bars.empty() && found == bars.end() && (hasMinutes || isInLastSpan(data, day))) {
        --found;
    }
    const bool isThere = found != bars.end() && (hasDay(data, found, day) || isInLastSpan(data, day));
    return isThere ? std::optional(static_cast<int>(found - bars.begin())) : std::nullopt;
}

TradePlaces::TradePlaces(const ChartData &data, const Trades &trades)
{
    if (data.bars.empty()) {
        return;
    }
    m_places.reserve(trades.size());
    for (size_t number = 0; number < trades.size(); ++number) {
        const AccountTrade &trade = trades[number];
        if (const auto bar = barOf(data, trade.day, trade.time)) {
            m_places.push_back({*bar, data.shownPrice(trade.price, trade.day), number});
        }
    }
}

std::pair<TradePlaces::Iterator, TradePlaces::Iterator> TradePlaces::within(const BarRange &range) const
{
    const auto isBefore = [](const PlacedTrade &place, size_t bar) {
        return static_cast<size_t>(place.bar) < bar;
    };
    const auto first = std::lower_bound(m_places.begin(), m_places.end(), range.first, isBefore);
    return {first, std::lower_bound(first, m_places.end(), range.end, isBefore)};
}

const PlacedTrade *TradePlaces::find(size_t trade) const
{
    const auto found =
        std::lower_bound(m_places.begin(), m_places.end(), trade,
                         [](const PlacedTrade &place, size_t wanted) { return place.trade < wanted; });
    return found == m_places.end() || found->trade != trade ? nullptr : &*found;
}

} // namespace Terminal
