#pragma once

#include "terminal/chart/axes/BarViewport.h"
#include "terminal/chart/axes/ChartGeometry.h"
#include "terminal/chart/axes/PriceFit.h"
#include "terminal/chart/theme/ChartTheme.h"
#include "terminal/data/DataFolder.h"

#include <qwt_plot.h>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

class QwtPlotGrid;

namespace Terminal {

class CandleCurve;
class ChartForeground;
class TimeLabels;
class VisibleBars;
class VolumeItem;

/// The K-line chart of one security: candles, volume, a time axis without gaps for closed hours and a
/// crosshair.
///
/// Every bar of data() is loaded; span() is what the user sees of them. Whatever changes either fits
/// the scales at once and asks for one repaint.
class ChartView : public QwtPlot
{
    Q_OBJECT

public:
    explicit ChartView(QWidget *parent = nullptr);
    ~ChartView() override;

    /// Shows other bars, and the most recent of them.
    void setData(const ChartData &data);
    const ChartData &data() const { return m_data; }

    /// Shows the same bars in other prices; what is in view stays. Requires as many bars as are shown.
    void setPrices(const ChartData &data);

    /// Puts these in the place of the bars from number `first` on, of at least as many. The view stays where
    /// it is, unless the last bar was in it and the new one would not be: then it moves along.
    void grow(size_t first, const Bars &bars);

    /// Shows the same chart as it is now. Requires the security and the period of data() and at least as many
    /// bars; the view stays as with grow().
    void refresh(const ChartData &data);

    void setTheme(const ChartTheme &theme);
    const ChartTheme &theme() const { return m_theme; }

    /// Language of the captions on the chart.
    void setLanguage(QLocale::Language language);

    const BarSpan &span() const { return m_viewport.span(); }
    /// Shows `span`, held as BarViewport does.
    void setSpan(const BarSpan &span);
    /// A factor below 1 zooms in; the bar at pixel `x` stays where it is.
    void zoom(double factor, double x);
    /// Moves the view by so many bars, to the right when positive.
    void pan(double bars);
    /// Shows the span that a newly opened chart shows.
    void showRecent();
    /// Moves the view to the last bar.
    void showLast();
    void showAll();

    /// What the price scale is asked to show besides the candles, see fitPrices().
    void setPriceWishes(std::function<std::vector<PriceSpan>()> wishes);

    /// Fits the scales and repaints.
    void refit();

    const ChartGeometry &chartGeometry() const { return m_geometry; }
    const VisibleBars &visibleBars() const { return *m_visible; }

    /// The loaded bar nearest to pixel `x`, -1 when no bars are loaded.
    int barAt(double x) const;

    /// The loaded bar that stands at pixel `x`; nothing beside the bars.
    std::optional<int> barUnder(double x) const;

    /// The time of the bar at pixel `x`, one that is still to come included; empty beside them.
    QString timeAt(double x) const;

    /// Puts the crosshair at a pixel of the canvas, or takes it away.
    void setCrosshair(std::optional<QPoint> position);
    bool hasCrosshair() const { return m_crosshair.has_value(); }

    /// Has every item draw itself as it would on the screen now, for what they learn from it.
    void paintAside();

    /// Draws a ring around what `ring` names at each repaint, in pixels of the canvas; none: no ring.
    void setRing(std::function<std::optional<QRectF>()> ring);

    /// Who tells in words what overlays draw in view; asked when a screen reader wants to know.
    void setOverlaySummary(std::function<QString()> summary) { m_overlaySummary = std::move(summary); }
    QString overlaySummary() const { return m_overlaySummary ? m_overlaySummary() : QString(); }

    /// Has a screen reader say something about the chart.
    void announce(const QString &text);
    QString announcement() const { return m_announcement; }

    void updateLayout() override;

Q_SIGNALS:
    /// Other bars were loaded.
    void dataChanged();
    /// The same bars have other prices; the scales are not fitted yet.
    void pricesChanged();
    /// Bars from this number on are others, or were added; the scales are not fitted yet.
    void barsGrew(int first);
    /// Other bars or prices are in view, or were fitted anew; a repaint follows.
    void viewChanged();
    /// The crosshair is on another bar; -1 for none.
    void pointedBarChanged(int bar);

private:
    void setUpAxes();
    void setUpItems();
    void showGrown(size_t first, double lastBefore);
    void fitViewport();
    double lastBar() const;
    void fitTime();
    void fitPriceScale();
    void fitVolume();
    void updateGeometryOfChart();
    void updatePointedBar();

    ChartData m_data;
    ChartTheme m_theme;
    QLocale::Language m_language = QLocale::Chinese;
    BarViewport m_viewport;
    PriceSpan m_prices;
    ChartGeometry m_geometry;
    QSize m_fittedSize;
    bool m_isLayingOut = false;
    std::optional<QPoint> m_crosshair;
    int m_pointedBar = -1;
    std::function<std::vector<PriceSpan>()> m_wishes;
    std::function<QString()> m_overlaySummary;
    QString m_announcement;

    // Owned by the plot they are attached to.
    VisibleBars *m_visible;
    CandleCurve *m_candles;
    VolumeItem *m_volume;
    QwtPlotGrid *m_grid;
    TimeLabels *m_timeLabels;
    ChartForeground *m_foreground;
};

} // namespace Terminal
