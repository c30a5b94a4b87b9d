#pragma once

#include "tradechartobject/ChartInterface.h"

#include <QByteArray>
#include <QStringList>

#include <functional>
#include <vector>

/// A chart of a host that a test sets up and looks into. Bar i is centred at x = 10 i; a price is at
/// y = (high - price) * pixelsPerUnit.
class FakeAxis final : public Korvane::IChartAxis
{
public:
    QByteArray screen = "screen-1";
    int mode = 0;
    bool hasPriceScale = true;
    double low = 0.0;
    double high = 100.0;
    double pixelsPerUnit = 10.0;
    double markerPixels = 16.0;
    std::vector<Korvane::AnalyData> bars;

    std::vector<Korvane::IChartObject *> updated; ///< every updateObject()
    const char **popupArray = nullptr;            ///< as handed over; valid inside onPopup
    std::vector<QStringList> popups;              ///< the lines of every pop-up
    std::vector<QByteArray> questions;            ///< every confirmBox()
    std::vector<QByteArray> messages;             ///< every showMessage()
    std::vector<int> barsAsked;                   ///< every barAt()
    std::vector<double> pricesAsked;              ///< every priceToY() while notesPrices
    bool notesPrices = true;                      ///< off where the heap is counted
    int hostCalls = 0;                            ///< number of coordinate conversions
    int rangesAsked = 0;                          ///< number of visiblePriceRange()

    std::function<void()> onUpdate;
    std::function<int()> onPopup = [] { return -1; };
    std::function<bool()> onConfirm = [] { return false; };
    std::function<void()> onMessage;
    std::function<void()> onBarAt;
    std::function<void()> onLookUp;        ///< inside barToX(), priceToY() and visiblePriceRange()
    std::function<int(double)> barUnder;   ///< in place of the usual xToBar()
    std::function<double(double)> pixelOf; ///< in place of the usual priceToY()
    bool hasScreenId = true;
    bool popupHasTerminator = true; ///< false: only the lines that expectLines tells are read
    int expectLines = 0;

    double yOf(double price) const { return (high - price) * pixelsPerUnit; }

    int chartMode() override { return mode; }
    bool visiblePriceRange(double &lowest, double &highest) override;
    const char *screenId() override { return hasScreenId ? screen.constData() : nullptr; }
    double markerSize() override { return markerPixels; }
    void updateObject(Korvane::IChartObject *object) override;
    int popupMenu(const char **lines, void *reserved) override;
    void showMessage(const char *text) override;
    bool confirmBox(const char *text) override;
    double barToX(int bar) override;
    double priceToY(double price, int, int) override;
    int xToBar(double x) override;
    void barAt(int bar, Korvane::AnalyData &out) override;

private:
    void lookUp() const;
};

/// A painter that writes down what it is told to draw. Set barCount to the bars of the last calcIt().
class FakePainter final : public Korvane::IChartPainter
{
public:
    struct Call
    {
        enum Kind { EndPaint, SeriesLabel, LineSeries, MarkerSeries, Marker } kind;
        std::vector<double> values;
        std::vector<double> prices;
        QByteArray text;
        double number = 0.0; ///< width of a line, price of a marker
        std::vector<int> ints;
        const double *flags = nullptr; ///< of a marker series, as handed over; valid until the next calcIt()
    };

    std::size_t barCount = 0;
    std::vector<Call> calls;
    std::function<void()> onMarkerSeries;

    void endPaint() override;
    void drawSeriesLabel(const double *values, const char *text, int index) override;
    void drawLineSeries(int reserved, const double *values, double width) override;
    void drawMarkerSeries(int reserved, const double *flags, const double *prices, int style,
                          int variant) override;
    void drawMarker(int reserved, int bar, int kind, int atLow, double price) override;

private:
    std::vector<double> copy(const double *values) const;
};

/// The record of a security as a host fills it.
Korvane::tagCodeWithName makeSecurity(int market, const char *code, std::int64_t identity,
                                      const char *name = "");

/// A daily bar; `date` is yyyymmdd.
Korvane::AnalyData makeDayBar(std::uint32_t date, double low = 9.0, double high = 11.0, double close = 10.0);

/// A minute bar; `date` is yyyymmdd, `time` is hhmm.
Korvane::AnalyData makeMinuteBar(std::uint32_t date, std::uint32_t time, double low = 9.0, double high = 11.0,
                                 double close = 10.0);
