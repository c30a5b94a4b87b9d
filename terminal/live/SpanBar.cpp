#include "terminal/live/SpanBar.h"

#include "terminal/data/BarAggregation.h"

#include <algorithm>

namespace Terminal {

namespace {

Bar joined(const Bars &bars)
{
    Bar sum = bars.front();
    std::for_each(bars.begin() + 1, bars.end(), [&sum](const Bar &bar) { extendBar(sum, bar); });
    return sum;
}

} // namespace

SpanOfToday takeSpanOfToday(Bars *days, ChartPeriod period, Trading::TradingDate today)
{
    SpanOfToday span;
    span.day = today;
    if (!days->empty() && days->back().date == today.number()) {
        span.row = days->back();
        days->pop_back();
    }
    const Bar ofToday{today.number()};
    const auto first = std::find_if(days->rbegin(), days->rend(), [&](const Bar &day) {
                           return !isOfSameSpan(day, ofToday, period);
                       }).base();
    if (first != days->end()) {
        span.before = joined(Bars(first, days->end()));
    }
    return span;
}

Bar dayBar(const MinuteBook &minutes, const SpanOfToday &span, double factor)
{
    Bar day = joined(minutes.bars());
    day.minute = 0;
    for (double *const price : {&day.open, &day.high, &day.low, &day.close}) {
        *price *= factor;
    }
    if (span.row) {
        const bool isRowLater = span.rowTime && span.rowTime > minutes.lastTime();
        day.open = span.row->open;
        day.high = std::max(day.high, span.row->high);
        day.low = std::min(day.low, span.row->low);
        day.close = isRowLater ? span.row->close : day.close;
        day.volume = std::max(day.volume, span.row->volume);
    }
    return day;
}

std::optional<Bar> spanBar(const MinuteBook *minutes, const SpanOfToday &span, double factor)
{
    const bool hasMinutes = minutes != nullptr && !minutes->bars().empty();
    const std::optional<Bar> day = hasMinutes ? std::optional(dayBar(*minutes, span, factor)) : span.row;
    if (!day || !span.before) {
        return day;
    }
    Bar bar = *span.before;
    extendBar(bar, *day);
    return bar;
}

} // namespace Terminal
