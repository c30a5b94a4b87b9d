// One chart of a terminal: bars, the overlays on them, what they ask and what they draw.
#pragma once

#include <tradechartobject/ChartInterface.h>

#include <QtGui>

struct Chart : public Korvane::IChartAxis, public Korvane::IChartPainter
{
    Korvane::tagCodeWithName security{1, {}, 1, "host"}; // of Shanghai; another identity for each security
    Korvane::Period period = Korvane::DayPeriod;
    QVector<Korvane::AnalyData> bars;
    QVector<Korvane::IChartObject *> overlays;
    std::function<void()> update; ///< recomputes and repaints
    double lowest = 1e300, highest = -1e300;
    QRect pane = QRect(0, 0, 900, 300); ///< its part of the picture
    QPainter painter;
    QStringList drawn; ///< a word for each mark and label of the last repaint

    virtual ~Chart() // before the application
    {
        std::for_each(overlays.begin(), overlays.end(), [](auto *overlay) { overlay->deleteObject(); });
        qDeleteAll(overlays);
    }
    void show(QImage &picture)
    {
        for (const Korvane::AnalyData &bar : bars) {
            lowest = std::min(lowest, bar.low);
            highest = std::max(highest, bar.high);
        }
        for (Korvane::IChartObject *overlay : overlays) {
            int unused = 0;
            overlay->calcIt(security, bars.data(), bars.size(), period, 0, 0);
            overlay->calcRatio(0, 0); // those of the factory never widen the scale
            highest = std::max(highest, overlay->maximizeValue(unused));
            lowest = std::min(lowest, overlay->minimizeValue(unused));
        }
        drawn.clear();
        painter.begin(&picture);
        painter.fillRect(pane, Qt::white);
        for (int bar = 0; bar < bars.size(); ++bar) {
            painter.fillRect(QRectF(at(bar, bars[bar].high), at(bar + 1, bars[bar].low)), Qt::gray);
        }
        for (Korvane::IChartObject *overlay : overlays) {
            overlay->paintIt(*this);
        }
        painter.end();
    }

    // The axis: what overlays ask
    int chartMode() override { return period == Korvane::IntradayPeriod ? Korvane::TodayChart : 0; }
    bool visiblePriceRange(double &low, double &high) override { return (low = lowest) < (high = highest); }
    const char *screenId() override { return period == Korvane::IntradayPeriod ? "minutes" : "days"; }
    double markerSize() override { return 16.0; }
    void updateObject(Korvane::IChartObject *) override { QTimer::singleShot(0, qApp, update); }
    int popupMenu(const char **lines, void *) override { return qInfo("%s", *lines), -1; } // nobody chooses
    void showMessage(const char *text) override { qInfo("%s", text); }
    bool confirmBox(const char *) override { return false; } // nobody is there to say yes
    double barToX(int bar) override { return (bar + 0.5) * pane.width() / bars.size(); }
    double priceToY(double price, int, int) override
    {
        return pane.bottom() - 30 - 240 * (price - lowest) / (highest - lowest);
    }
    int xToBar(double x) override { return int(x * bars.size() / pane.width()); }
    void barAt(int bar, Korvane::AnalyData &out) override { out = bars.at(bar); }

    // The painter: what they draw
    QPointF at(int bar, double price) { return {barToX(bar), priceToY(price, -1, -1)}; }
    void drawMark(const QPointF &tip, double height, const QColor &colour)
    {
        drawn.append(colour.name());
        painter.fillRect(QRectF(tip.x() - 3.0, tip.y(), 6.0, height).normalized(), colour);
    }
    void endPaint() override {}
    void drawSeriesLabel(const double *values, const char *text, int) override
    {
        drawn.append(QString::fromUtf8(text));
        painter.drawText(at(0, values[0]) - QPointF(0.0, 3.0), drawn.last());
    }
    void drawLineSeries(int, const double *values, double width) override
    {
        painter.setPen(QPen(QColor(255, 140, 0), width));
        for (int bar = 1; bar < bars.size(); ++bar) {
            painter.drawLine(at(bar - 1, values[bar - 1]), at(bar, values[bar]));
        }
    }
    void drawMarkerSeries(int, const double *flags, const double *prices, int style, int) override
    {
        for (int bar = 0; bar < bars.size(); ++bar) {
            if (flags[bar] == 1.0) { // buys, sells, both; a mark stands on the price
                drawMark(at(bar, prices[bar]), -16.0, QColor::fromHsv(60 * style, 255, 255));
            }
        }
    }
    void drawMarker(int, int bar, int kind, int atLow, double price) override
    {
        drawMark(at(bar, price), atLow == 1 ? -16.0 : 16.0, QColor::fromHsv(20 * kind - 200, 255, 255));
    }
};
