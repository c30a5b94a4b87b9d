#include "trademodule/exchange/NewTrading.h"

#include <algorithm>

namespace TradeModule {

namespace {

bool isSameMarket(const Quote &a, const Quote &b)
{
    return a.date == b.date && a.recorded == b.recorded;
}

/// What was traded of a minute after `before` was told of it: from its close on, and as far as highs and lows
/// went on.
Quote addedSince(const Quote &before, const Quote &quote)
{
    Quote added = quote;
    added.open = before.close;
    added.high = quote.high > before.high ? quote.high : std::max(before.close, quote.close);
    added.low = quote.low < before.low ? quote.low : std::min(before.close, quote.close);
    added.volume = quote.volume - before.volume;
    return added;
}

} // namespace

std::optional<Quote> NewTrading::of(const Quote &quote) const
{
    const auto last = m_last.constFind(quote.security);
    if (last == m_last.constEnd() || !isSameMarket(*last, quote)) {
        return quote;
    }
    const int minute = quote.time.endMinute();
    const int lastMinute = last->time.endMinute();
    if (minute == lastMinute) {
        return quote.volume > last->volume ? std::optional(addedSince(*last, quote)) : std::nullopt;
    }
    return minute > lastMinute || quote.recorded ? std::optional(quote) : std::nullopt;
}

ClockTime NewTrading::timeWith(const Quote &quote) const
{
    const bool goesOn = m_latest && isSameMarket(*m_latest, quote) && !quote.recorded;
    return goesOn ? std::max(m_latest->time, quote.time) : quote.time;
}

std::optional<Quote> NewTrading::last(const SecurityId &security) const
{
    const auto last = m_last.constFind(security);
    return last == m_last.constEnd() ? std::nullopt : std::optional(*last);
}

void NewTrading::note(const Quote &quote)
{
    Quote latest = quote;
    latest.time = timeWith(quote);
    m_latest = latest;
    m_last.insert(quote.security, quote);
}

} // namespace TradeModule
