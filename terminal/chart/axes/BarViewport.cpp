#include "terminal/chart/axes/BarViewport.h"

#include <algorithm>

namespace Terminal {

namespace {

constexpr double fewestBars = 10;        ///< that may be zoomed to
constexpr double recentBars = 150;       ///< that a new chart shows
constexpr double airShare = 0.08;        ///< room right of the last bar for labels, of what a new chart shows
constexpr double firstLabelShare = 0.01; ///< room for the label under a day's first minute

} // namespace

void BarViewport::setRoom(size_t bars, bool showsWholeDay)
{
    m_room = static_cast<double>(bars);
    m_showsWholeDay = showsWholeDay;
}

BarSpan BarViewport::whole() const
{
    const double shown = m_showsWholeDay ? m_room : std::min(m_room, recentBars);
    const double left = m_showsWholeDay ? m_room * firstLabelShare : 0;
    return {-0.5 - left, std::max(m_room, 1.0) - 0.5 + shown * airShare};
}

BarSpan BarViewport::held(const BarSpan &span) const
{
    const BarSpan all = whole();
    const double width = std::clamp(span.width(), std::min(fewestBars, all.width()), all.width());
    const double first = std::clamp(span.first, all.first, all.last - width);
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
    setSpan(m_showsWholeDay ? all : BarSpan{all.last - recentBars, all.last});
}

void BarViewport::followLast(double before, double now)
{
    const bool showedLast = m_span.first <= before && before <= m_span.last;
    if (showedLast && now > m_span.last) {
        pan(now - before);
    }
}

} // namespace Terminal
