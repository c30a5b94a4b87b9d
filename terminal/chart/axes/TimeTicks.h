#pragma once

#include "terminal/chart/axes/ChartGeometry.h"
#include "terminal/data/Bar.h"

#include <QString>

#include <vector>

namespace Terminal {

/// One label of the time axis.
struct TimeTick
{
    size_t bar = 0; ///< the bar that it stands under
    QString label;
};

/// The labels of the time axis for the visible `span` of `bars`, at least `spacing` bars apart. Days
/// and longer are labelled where a year, a month or a day begins, minutes at round times of day.
/// Costs a few binary searches, not a pass over the bars.
std::vector<TimeTick> timeTicks(const Bars &bars, const BarSpan &span, double spacing);

/// "2024-01-31", or "2018-01-02 09:31" for a minute.
QString timeText(const Bar &bar);

} // namespace Terminal
