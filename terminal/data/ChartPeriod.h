#pragma once

#include <QString>

namespace Terminal {

/// What one bar of the chart spans.
enum class ChartPeriod { Day, Week, Month, Minute };

constexpr ChartPeriod chartPeriods[] = {ChartPeriod::Day, ChartPeriod::Week, ChartPeriod::Month,
                                        ChartPeriod::Minute};

/// The word of the command line and the settings, e.g. "day".
QString periodWord(ChartPeriod period);

/// The title that the user reads, translated.
QString periodTitle(ChartPeriod period);

/// The number that overlays know the period by.
int overlayPeriod(ChartPeriod period);

} // namespace Terminal
