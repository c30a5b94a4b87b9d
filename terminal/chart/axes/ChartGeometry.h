#pragma once

#include "terminal/chart/axes/BarSpan.h"

namespace Terminal {

/// Where bars and prices lie on the canvas of a chart, in its pixels; y grows downwards.
struct ChartGeometry
{
    BarSpan span;
    double left = 0;  ///< x of span.first
    double right = 0; ///< x of span.last

    double lowPrice = 0;  ///< price at `bottom`
    double highPrice = 0; ///< price at `top`
    double top = 0;       ///< upper edge of the price pane
    double bottom = 0;    ///< lower edge of the price pane

    bool hasScale() const { return right > left && bottom > top && highPrice > lowPrice; }
    double barWidth() const { return (right - left) / span.width(); }
    double barToX(double bar) const { return left + (bar - span.first) * barWidth(); }
    double xToBar(double x) const { return span.first + (x - left) / barWidth(); }
    double priceToY(double price) const
    {
        return bottom - (price - lowPrice) / (highPrice - lowPrice) * (bottom - top);
    }
    double yToPrice(double y) const
    {
        return lowPrice + (bottom - y) / (bottom - top) * (highPrice - lowPrice);
    }
};

} // namespace Terminal
