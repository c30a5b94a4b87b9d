#pragma once

#include "terminal/chart/axes/BarSpan.h"

#include <cstddef>

namespace Terminal {

/// The bars that a chart has room for.
struct BarRoom
{
    size_t loaded = 0;
    size_t toCome = 0; ///< after the loaded ones
    bool showsWholeDay =
        false; ///< a whole day is shown at once, with room for the label under its first minute
};

/// Which of a chart's bars are in view. The span stays inside the room that the chart has, with some air
/// after the last bar, and no narrower than a few bars. It never leaves all loaded bars.
class BarViewport
{
public:
    /// The span stays as it is until it is set.
    void setRoom(const BarRoom &room) { m_room = room; }

    const BarSpan &span() const { return m_span; }
    void setSpan(const BarSpan &span) { m_span = held(span); }

    /// A factor below 1 zooms in; `bar` stays where it is.
    void zoom(double factor, double bar);
    /// Moves by so many bars, to the right when positive.
    void pan(double bars);
    /// The span that a newly opened chart shows.
    void showRecent();
    void showAll() { setSpan(whole()); }
    /// As many bars as now, the last loaded one at the end of them.
    void showLast();

    /// The last bar was number `before` and is `now`: stays where it is, unless that bar was in view and the
    /// new one would not be. Then it moves along.
    void followLast(double before, double now);

private:
    double bars() const { return static_cast<double>(m_room.loaded + m_room.toCome); }
    BarSpan whole() const;
    BarSpan held(const BarSpan &span) const;

    BarRoom m_room;
    BarSpan m_span;
};

} // namespace Terminal
