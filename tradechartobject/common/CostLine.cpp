#include "tradechartobject/common/CostLine.h"

#include <cmath>
#include <cstdio>
#include <vector>

namespace TradeChart {

namespace {

constexpr double lineWidth = 1.0;     // pixels
constexpr double catchDistance = 5.0; // pixels
constexpr int besideTheSeries = -1;
constexpr std::size_t labelSize = 128; // longest label with its end, in bytes

} // namespace

void drawCostLine(Korvane::IChartPainter &painter, std::size_t barCount, double price, int decimals)
{
    char label[labelSize];
    std::snprintf(label, sizeof label, "持仓成本:%.*f", decimals, price);
    const std::vector<double> values(barCount, price);
    painter.drawLineSeries(0, values.data(), lineWidth);
    painter.drawSeriesLabel(values.data(), label, besideTheSeries);
}

int hitTestCostLine(Korvane::IChartAxis &axis, double price, double y)
{
    const double lineY = axis.priceToY(price, -1, -1);
    return std::abs(lineY - y) <= catchDistance ? 0 : -1;
}

} // namespace TradeChart
