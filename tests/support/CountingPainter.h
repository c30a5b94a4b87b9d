#pragma once

#include "tradechartobject/ChartInterface.h"

/// Counts the host calls of a paint and looks at nothing. Compiled apart from the loops that call it, as
/// a host's painter is.
class CountingPainter final : public Korvane::IChartPainter
{
public:
    int calls = 0;
    const double *flags[6] = {}; ///< of the last marker series of each style

    void endPaint() override;
    void drawSeriesLabel(const double *values, const char *text, int index) override;
    void drawLineSeries(int reserved, const double *values, double width) override;
    void drawMarkerSeries(int reserved, const double *series, const double *prices, int style,
                          int variant) override;
    void drawMarker(int reserved, int bar, int kind, int atLow, double price) override;
};
