#include "hostcheck/PixelMapping.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace HostCheck {

namespace {

constexpr int samples = 8;
constexpr double onePixel = 1.0; // terminals that count in whole pixels are right, too

std::string arrow(double from, double to)
{
    return std::to_string(from) + " -> " + std::to_string(to);
}

/// The pixel of a bar, asked twice.
double pixelOfBar(Korvane::IChartAxis &axis, int bar, const Tell &tell)
{
    const double x = axis.barToX(bar);
    if (!std::isfinite(x)) {
        tell(Rule::BarPixelNotFinite, "bar " + arrow(bar, x));
    } else if (axis.barToX(bar) != x) {
        tell(Rule::MappingUnsteady, "bar " + std::to_string(bar));
    }
    return x;
}

double pixelOfPrice(Korvane::IChartAxis &axis, double price, const Tell &tell)
{
    const double y = axis.priceToY(price, -1, -1);
    if (!std::isfinite(y)) {
        tell(Rule::PricePixelNotFinite, "price " + arrow(price, y));
    } else if (axis.priceToY(price, -1, -1) != y) {
        tell(Rule::MappingUnsteady, "price " + std::to_string(price));
    }
    return y;
}

void checkBarPixels(Korvane::IChartAxis &axis, int last, const Tell &tell)
{
    const double first = pixelOfBar(axis, 0, tell);
    double before = first;
    for (int sample = 1; sample <= samples; ++sample) {
        const int bar = static_cast<int>(static_cast<long long>(last) * sample / samples);
        const double x = pixelOfBar(axis, bar, tell);
        if (x < before || (sample == samples && last > 0 && x <= first)) {
            tell(Rule::BarPixelsNotRising, "bar " + arrow(bar, x) + ", after " + std::to_string(before));
        }
        before = x;
    }
}

void checkPricePixels(Korvane::IChartAxis &axis, double low, double high, const Tell &tell)
{
    const double top = high > low ? high : low + std::max(0.01, std::abs(low) / 100.0);
    const double yLow = pixelOfPrice(axis, low, tell);
    const double yMiddle = pixelOfPrice(axis, low + (top - low) / 2.0, tell);
    const double yTop = pixelOfPrice(axis, top, tell);
    if (yTop >= yLow || yMiddle > yLow || yTop > yMiddle) {
        tell(Rule::PricePixelsUpsideDown, "price " + arrow(low, yLow) + ", " + arrow(top, yTop));
    }
}

/// How wide a bar is there.
double widthAt(Korvane::IChartAxis &axis, int bar, int barCount)
{
    const int neighbour = bar + 1 < barCount ? bar + 1 : bar - 1;
    return neighbour < 0 ? 0.0 : std::abs(axis.barToX(neighbour) - axis.barToX(bar));
}

} // namespace

void checkMapping(Korvane::IChartAxis &axis, const HandedRecords &shown, const Tell &tell)
{
    double low = 0.0;
    double high = 0.0;
    if (shown.bars.empty() || !axis.visiblePriceRange(low, high)) {
        return;
    }
    checkBarPixels(axis, static_cast<int>(shown.bars.size()) - 1, tell);
    if (std::isfinite(shown.lowestPrice()) && std::isfinite(shown.highestPrice())) {
        checkPricePixels(axis, shown.lowestPrice(), shown.highestPrice(), tell);
    }
}

void checkBarUnder(Korvane::IChartAxis &axis, int barCount, double x, const Tell &tell)
{
    if (barCount == 0 || !std::isfinite(x)) {
        return;
    }
    const int last = barCount - 1;
    const int bar = axis.xToBar(x);
    if (axis.xToBar(x) != bar) {
        tell(Rule::MappingUnsteady, "x " + std::to_string(x));
        return;
    }
    const std::string found = "x " + std::to_string(x) + " -> bar " + std::to_string(bar);
    if (bar < 0 || bar > last) {
        if (x >= axis.barToX(0) && x <= axis.barToX(last)) {
            tell(Rule::BarNotUnderPixel, found);
        }
        return;
    }
    const double middle = axis.barToX(bar);
    const double reach = 0.75 * widthAt(axis, bar, barCount) + onePixel;
    const bool isBefore = x < middle - reach && bar > 0; // beyond the ends the nearest bar is as good as none
    const bool isBehind = x > middle + reach && bar < last;
    const int again = axis.xToBar(middle);
    const bool leadsBack =
        again == bar || (again >= 0 && again <= last && std::abs(axis.barToX(again) - middle) <= onePixel);
    if (isBefore || isBehind || !leadsBack) {
        tell(Rule::BarNotUnderPixel, found + " -> x " + std::to_string(middle));
    }
}

} // namespace HostCheck
