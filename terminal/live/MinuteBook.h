#pragma once

#include "terminal/data/Bar.h"
#include "trading/Quote.h"

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace Terminal {

/// The minutes of one security's day, as its quotes tell them.
///
/// All quotes of a minute are put together: the highest high, the lowest low, the largest volume, the open
/// of the first and the close of the last. The last is the one with the most shares, since shares are counted
/// from the minute's beginning; of as many, that of the latest time. So the same quotes make the same bars in
/// whatever order they come, and however often.
class MinuteBook
{
public:
    /// Adds a quote to its minute. The number of the first bar that is another one now; nothing when none is.
    std::optional<size_t> take(const Trading::Quote &quote);

    /// Adds minutes that were recorded, where they tell of more shares than the quotes did. The first bar
    /// that is another one now, as above.
    std::optional<size_t> fill(const Bars &recorded);

    /// Oldest first; a minute that nobody told of is missing.
    const Bars &bars() const { return m_bars; }

    /// The latest time that a quote had, also one that is of no bar.
    std::optional<Trading::ClockTime> lastTime() const { return m_lastTime; }

    /// The close of the day before, when a quote told it.
    std::optional<double> previousClose() const { return m_previousClose; }

private:
    /// Orders what is told of a minute: shares so far, then the time.
    using Progress = std::pair<double, Trading::ClockTime>;

    /// How far into its minute the open and the close of a bar were told.
    struct Told
    {
        Progress open;
        Progress close;
    };

    size_t placeOf(int minute) const;
    std::optional<size_t> join(const Bar &bar, Trading::ClockTime time);

    Bars m_bars;
    std::vector<Told> m_told; ///< of each bar
    std::optional<Trading::ClockTime> m_lastTime;
    std::optional<double> m_previousClose;
};

} // namespace Terminal
