#pragma once

#include "terminal/chart/marks/PointerTarget.h"

#include <QString>

#include <vector>

namespace Terminal {

class ChartView;
struct ChartData;

/// The change that a bar closed with, as a ratio, see ChartData::priceBefore().
double changeAt(size_t bar, const ChartData &data);

/// The period of a chart and, where its prices are adjusted, that they are.
QString spanTitle(const ChartData &data);

/// The security and the span of a chart.
QString chartTitle(const ChartView &chart);

/// What a chart shows in one sentence: title, range in view, last bar, and what overlays draw in view.
QString chartSummary(const ChartView &chart);

/// "buys 3, sells 2" of marks; empty without any.
QString marksSummary(const std::vector<ClickableMark> &marks);

/// One mark and the bar that it stands on.
QString markText(const ClickableMark &mark, const ChartView &chart);

} // namespace Terminal
