#pragma once

#include "tradechartobject/ChartInterface.h"

#include <cstdint>
#include <vector>

/// yyyymmdd of the n-th day of a long history.
std::uint32_t dateOf(int day);

/// `count` daily bars of that history, as a host hands them over.
std::vector<Korvane::AnalyData> manyBars(int count);

/// Counts the host calls of a paint and looks at nothing.
class CountingPainter final : public Korvane::IChartPainter
{
public:
    int calls = 0;
    const double *flags[6] = {}; ///< of the last marker series of each style

    void endPaint() override { ++calls; }
    void drawSeriesLabel(const double *, const char *, int) override { ++calls; }
    void drawLineSeries(int, const double *, double) override { ++calls; }
    void drawMarkerSeries(int, const double *series, const double *, int style, int) override
    {
        flags[style] = series;
        ++calls;
    }
    void drawMarker(int, int, int, int, double) override { ++calls; }
};
