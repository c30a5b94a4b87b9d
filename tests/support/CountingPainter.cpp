#include "tests/support/CountingPainter.h"

void CountingPainter::endPaint()
{
    ++calls;
}

void CountingPainter::drawSeriesLabel(const double *, const char *, int)
{
    ++calls;
}

void CountingPainter::drawLineSeries(int, const double *, double)
{
    ++calls;
}

void CountingPainter::drawMarkerSeries(int, const double *series, const double *, int style, int)
{
    flags[style] = series;
    ++calls;
}

void CountingPainter::drawMarker(int, int, int, int, double)
{
    ++calls;
}
