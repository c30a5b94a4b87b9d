#include "terminal/chart/axes/BarViewport.h"

#include <algorithm>

namespace Terminal {

namespace {

constexpr double fewestBars = 10;        ///< that may be zoomed to
constexpr double leastLoaded = 5;        ///< bars that stay in view, for a chart is not to look empty
constexpr double recentBars = 150;       ///< that a new chart shows
constexpr double airShare = 0.08;        ///< room right of the last bar for labels, of what a new chart shows
constexpr double firstLabelShare = 0.01; ///< room for the label under a day's first minute

} // namespace

BarSpan BarViewport::whole() const
{
    const double shown = m_room.showsWholeDay ? bars() : std::min(bars(), recentBars);
    const double left = m_room.showsWholeDay ? bars() * firstLabelShare : 0;
    return {-0.5 - left, std::max(bars(), 1.0) - 0.5 + shown * airShare};
}

BarSpan BarViewport::held(const BarSpan &span) const
{
    const BarSpan all = whole();
    const double width = std::clamp(span.width(), std::min(fewestBars, all.width()), all.width());
    const double loaded = static_cast<double>(m_room.loaded);
    const double lastFirst = std::max(all.first, loaded - 0.5 - std::min(leastLoaded, loaded));
    const double first = std::clamp(span.first, all.first, std::min(all.last - width, lastFirst));
    return {first, first + width};
}

void BarViewport::zoom(double factor, double bar)
{
    const double allowed = held({0, m_span.width() * factor}).width() / m_span.width();
    setSpan({bar - (bar - m_span.first) * allowed, bar + (m_span.last - bar) * allowed});
}

void BarViewport::pan(double bars)
{
    setSpan({m_span.first + bars, m_span.last + bars});
}

void BarViewport::showRecent()
{
    const BarSpan all = whole();
    setSpan(m_room.showsWholeDay ? all : BarSpan{all.last - recentBars, all.last});
}

void BarViewport::showLast()
{
    const double last = static_cast<double>(m_room.loaded) - 0.5 + m_span.width() * airShare;
    setSpan({last - m_span.width(), last});
}

void BarViewport::followLast(double before, double now)
{
    const bool showedLast = m_span.first <= before && before <= m_span.last;
    if (showedLast && now > m_span.last) {
        pan(now - before);
    }
}

} // namespace Terminal
