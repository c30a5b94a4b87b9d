#include "tests/support/FakeHost.h"

#include <cstring>

bool FakeAxis::visiblePriceRange(double &lowest, double &highest)
{
    ++rangesAsked;
    lookUp();
    lowest = low;
    highest = high;
    return hasPriceScale;
}

void FakeAxis::updateObject(Korvane::IChartObject *object)
{
    updated.push_back(object);
    if (onUpdate) {
        onUpdate();
    }
}

int FakeAxis::popupMenu(const char **lines, void *reserved)
{
    popupArray = lines;
    QStringList texts;
    for (int line = 0; popupHasTerminator ? lines[line] != nullptr : line < expectLines; ++line) {
        texts.append(QString::fromUtf8(lines[line]));
    }
    if (reserved != nullptr) {
        texts.append(QStringLiteral("reserved is not null"));
    }
    popups.push_back(texts);
    return onPopup();
}

void FakeAxis::showMessage(const char *text)
{
    messages.emplace_back(text != nullptr ? text : "(null)");
    if (onMessage) {
        onMessage();
    }
}

bool FakeAxis::confirmBox(const char *text)
{
    questions.emplace_back(text);
    return onConfirm();
}

double FakeAxis::barToX(int bar)
{
    ++hostCalls;
    lookUp();
    return bar * 10.0;
}

double FakeAxis::priceToY(double price, int one, int two)
{
    ++hostCalls;
    if (notesPrices) {
        pricesAsked.push_back(price);
    }
    lookUp();
    if (one != -1 || two != -1) {
        return -1e9; // an overlay always passes -1
    }
    return pixelOf ? pixelOf(price) : yOf(price);
}

void FakeAxis::lookUp() const
{
    if (onLookUp) {
        onLookUp();
    }
}

int FakeAxis::xToBar(double x)
{
    ++hostCalls;
    return barUnder ? barUnder(x) : static_cast<int>((x + 5.0) / 10.0);
}

void FakeAxis::barAt(int bar, Korvane::AnalyData &out)
{
    barsAsked.push_back(bar);
    if (onBarAt) {
        onBarAt();
    }
    if (bar >= 0 && bar < static_cast<int>(bars.size())) {
        out = bars[static_cast<std::size_t>(bar)];
    }
}

void FakePainter::endPaint()
{
    calls.push_back({Call::EndPaint, {}, {}, {}, 0.0, {}});
}

void FakePainter::drawSeriesLabel(const double *values, const char *text, int index)
{
    calls.push_back({Call::SeriesLabel, copy(values), {}, text, 0.0, {index}});
}

void FakePainter::drawLineSeries(int reserved, const double *values, double width)
{
    calls.push_back({Call::LineSeries, copy(values), {}, {}, width, {reserved}});
}

void FakePainter::drawMarkerSeries(int reserved, const double *flags, const double *prices, int style,
                                   int variant)
{
    calls.push_back(
        {Call::MarkerSeries, copy(flags), copy(prices), {}, 0.0, {reserved, style, variant}, flags});
    if (onMarkerSeries) {
        onMarkerSeries();
    }
}

void FakePainter::drawMarker(int reserved, int bar, int kind, int atLow, double price)
{
    calls.push_back({Call::Marker, {}, {}, {}, price, {reserved, bar, kind, atLow}});
}

std::vector<double> FakePainter::copy(const double *values) const
{
    return std::vector<double>(values, values + barCount);
}

Korvane::tagCodeWithName makeSecurity(int market, const char *code, std::int64_t identity, const char *name)
{
    Korvane::tagCodeWithName security{};
    security.market = static_cast<std::int8_t>(market);
    std::strncpy(security.code, code, sizeof security.code - 1);
    security.identity = identity;
    std::strncpy(security.name, name, sizeof security.name - 1);
    return security;
}

Korvane::AnalyData makeDayBar(std::uint32_t date, double low, double high, double close)
{
    Korvane::AnalyData bar{};
    bar.time = date;
    bar.high = high;
    bar.low = low;
    bar.close = close;
    return bar;
}

Korvane::AnalyData makeMinuteBar(std::uint32_t date, std::uint32_t time, double low, double high,
                                 double close)
{
    const std::uint32_t year = date / 10000 - 2004;
    const std::uint32_t minutes = time / 100 * 60 + time % 100;
    return makeDayBar((year << 27U) | ((date % 10000) << 16U) | minutes, low, high, close);
}
