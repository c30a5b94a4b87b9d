#include "terminal/live/MinuteBook.h"

#include "terminal/live/BarQuote.h"

#include <algorithm>

namespace Terminal {

std::optional<size_t> MinuteBook::take(const Trading::Quote &quote)
{
    m_lastTime = std::max(m_lastTime.value_or(quote.time), quote.time);
    if (!quote.previousClose.isZero()) {
        m_previousClose = quote.previousClose.yuan();
    }
    const std::optional<Bar> bar = barOf(quote);
    return bar ? join(*bar, quote.time) : std::nullopt;
}

std::optional<size_t> MinuteBook::fill(const Bars &recorded)
{
    std::optional<size_t> first;
    for (const Bar &bar : recorded) {
        const size_t place = placeOf(bar.minute);
        const bool isKnown = place < m_bars.size() && m_bars[place].minute == bar.minute;
        const auto changed =
            isKnown && m_bars[place].volume >= bar.volume ? std::nullopt : join(bar, endOf(bar));
        first = first ? first : changed; // from the oldest to the latest
    }
    return first;
}

/// Quotes are mostly of the last bar or of the next one.
size_t MinuteBook::placeOf(int minute) const
{
    if (m_bars.empty() || m_bars.back().minute < minute) {
        return m_bars.size();
    }
    const auto place = std::lower_bound(m_bars.begin(), m_bars.end(), minute,
                                        [](const Bar &bar, int wanted) { return bar.minute < wanted; });
    return static_cast<size_t>(place - m_bars.begin());
}

std::optional<size_t> MinuteBook::join(const Bar &bar, Trading::ClockTime time)
{
    const size_t place = placeOf(bar.minute);
    const Progress progress(bar.volume, time);
    if (place == m_bars.size() || m_bars[place].minute != bar.minute) {
        m_bars.insert(m_bars.begin() + static_cast<std::ptrdiff_t>(place), bar);
        m_told.insert(m_told.begin() + static_cast<std::ptrdiff_t>(place), Told{progress, progress});
        return place;
    }
    Bar &known = m_bars[place];
    Told &told = m_told[place];
    const Bar before = known;
    if (progress < told.open) {
        told.open = progress;
        known.open = bar.open;
    }
    if (told.close < progress) {
        told.close = progress;
        known.close = bar.close;
    }
    known.high = std::max(known.high, bar.high);
    known.low = std::min(known.low, bar.low);
    known.volume = std::max(known.volume, bar.volume);
    return known == before ? std::nullopt : std::optional(place);
}

} // namespace Terminal
