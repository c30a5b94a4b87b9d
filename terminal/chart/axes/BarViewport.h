#pragma once

#include "terminal/chart/axes/BarSpan.h"

#include <cstddef>

namespace Terminal {

/// Which of a chart's bars are in view. The span stays inside the room that the chart has, with some air
/// after the last bar, and no narrower than a few bars.
class BarViewport
{
public:
    /// Of a chart with room for so many bars, those to come included. A whole day is shown at once, with room
    /// for the label under its first minute. The span stays as it is until it is set.
    void setRoom(size_t bars, bool showsWholeDay);

    const BarSpan &span() const { return m_span; }
    void setSpan(const BarSpan &span) { m_span = held(span); }

    /// A factor below 1 zooms in; `bar` stays where it is.
    void zoom(double factor, double bar);
    /// Moves by so many bars, to the right when positive.
    void pan(double bars);
    /// The span that a newly opened chart shows.
    void showRecent();
    void showAll() { setSpan(whole()); }

    /// The last bar was number `before` and is `now`: stays where it is, unless that bar was in view and the
    /// new one would not be. Then it moves along.
    void followLast(double before, double now);

private:
    BarSpan whole() const;
    BarSpan held(const BarSpan &span) const;

    double m_room = 0;
    bool m_showsWholeDay = false;
    BarSpan m_span;
};

} // namespace Terminal
