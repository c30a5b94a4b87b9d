#include "terminal/chart/view/ChartView.h"

#include "terminal/chart/axes/AxisLabels.h"
#include "terminal/chart/axes/PriceTicks.h"
#include "terminal/chart/bars/CandleCurve.h"
#include "terminal/chart/bars/VisibleBars.h"
#include "terminal/chart/bars/VolumeItem.h"
#include "terminal/chart/text/FigureText.h"
#include "terminal/chart/view/ChartAccessible.h"
#include "terminal/chart/view/ChartForeground.h"

#include <QScopedValueRollback>

#include <qwt_plot_canvas.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_layout.h>
#include <qwt_scale_div.h>
#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>

#include <QPainter>
#include <QPixmap>

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

constexpr double priceShare = 0.78;   ///< of the canvas height that the price pane has
constexpr double volumeShare = 0.165; ///< the same of the highest volume column, where there is room for it
constexpr double leastVolumeShare = 0.02;
constexpr double timeLabelRoom = 110; ///< pixels from one time label to the next
constexpr int axisFontPixels = 12;
constexpr double timeAxisHeight = 30;

QwtScaleDiv scaleDiv(double lower, double upper, const QList<double> &ticks)
{
    return QwtScaleDiv(lower, upper, {}, {}, ticks);
}

/// The bars that the time axis knows of: the loaded ones and, by their minutes only, those ahead.
Bars barsOfTimeAxis(const ChartData &data)
{
    Bars bars = data.bars;
    for (const std::int32_t minute : data.ahead) {
        bars.push_back({data.bars.back().date, minute});
    }
    return bars;
}

} // namespace

ChartView::ChartView(QWidget *parent)
    : QwtPlot(parent),
      m_visible(new VisibleBars),
      m_candles(new CandleCurve(m_visible)),
      m_volume(new VolumeItem(m_visible)),
      m_grid(new QwtPlotGrid),
      m_timeLabels(new TimeLabels),
      m_foreground(new ChartForeground(this))
{
    ChartAccessible::install();
    setAutoReplot(false);
    auto *const plotCanvas = qobject_cast<QwtPlotCanvas *>(canvas());
    plotCanvas->setFrameStyle(QFrame::NoFrame);
    plotCanvas->setPaintAttribute(QwtPlotCanvas::BackingStore, true);
    plotCanvas->setAttribute(Qt::WA_OpaquePaintEvent); // the backing store covers it all
    plotCanvas->setMouseTracking(true);
    plotLayout()->setAlignCanvasToScales(true);
    plotLayout()->setCanvasMargin(0);
    plotLayout()->setSpacing(0);
    setFocusPolicy(Qt::StrongFocus);
    setUpAxes();
    setUpItems();
    setTheme(makeTheme(ThemeKind::Dark, RiseColour::Red));
}

ChartView::~ChartView() = default;

void ChartView::setUpAxes()
{
    QFont axisFont = font();
    axisFont.setPixelSize(axisFontPixels);
    for (const auto axis : {xBottom, yRight}) {
        setAxisFont(axis, axisFont);
        axisWidget(axis)->setMargin(0);
        axisWidget(axis)->setSpacing(0);
    }
    enableAxis(yLeft, false);
    enableAxis(yRight, true);
    setAxisScaleDraw(yRight, new PriceLabels);
    setAxisScaleDraw(xBottom, m_timeLabels);
    m_timeLabels->setMinimumExtent(timeAxisHeight);
}

void ChartView::setUpItems()
{
    m_grid->setYAxis(yRight);
    m_grid->setZ(0);
    m_grid->attach(this);
    m_volume->setZ(1);
    m_volume->attach(this);
    m_candles->setYAxis(yRight);
    m_candles->setZ(2);
    m_candles->attach(this);
}

void ChartView::setData(const ChartData &data)
{
    m_data = data;
    fitViewport();
    setCrosshair({});
    showRecent();
    Q_EMIT dataChanged();
}

void ChartView::setPrices(const ChartData &data)
{
    m_data = data;
    Q_EMIT pricesChanged();
    refit();
}

void ChartView::grow(size_t first, const Bars &bars)
{
    if (bars.empty()) {
        return;
    }
    const double lastBefore = lastBar();
    m_data.bars.resize(first);
    m_data.bars.insert(m_data.bars.end(), bars.begin(), bars.end());
    m_data.ahead.erase(m_data.ahead.begin(),
                       std::upper_bound(m_data.ahead.begin(), m_data.ahead.end(), m_data.bars.back().minute));
    showGrown(first, lastBefore);
}

void ChartView::refresh(const ChartData &data)
{
    const double lastBefore = lastBar();
    const auto [shown, fresh] =
        std::mismatch(m_data.bars.begin(), m_data.bars.end(), data.bars.begin(), data.bars.end());
    const auto first = static_cast<size_t>(fresh - data.bars.begin());
    m_data = data;
    showGrown(first, lastBefore);
}

void ChartView::showGrown(size_t first, double lastBefore)
{
    fitViewport();
    m_viewport.followLast(lastBefore, lastBar());
    Q_EMIT barsGrew(static_cast<int>(first));
    refit();
}

void ChartView::setTheme(const ChartTheme &theme)
{
    m_theme = theme;
    QPalette colours = widgetPalette(theme);
    colours.setColor(QPalette::Window, theme.background);
    colours.setColor(QPalette::Text, theme.mutedText);
    colours.setColor(QPalette::WindowText, theme.mutedText);
    setAutoFillBackground(true);
    setPalette(colours);
    for (const auto axis : {xBottom, yRight}) {
        axisWidget(axis)->setPalette(colours);
    }
    setCanvasBackground(theme.background);
    m_grid->setPen(theme.grid);
    m_candles->setTheme(theme);
    m_volume->setTheme(theme);
    refit();
}

void ChartView::setLanguage(QLocale::Language language)
{
    m_language = language;
    refit();
}

void ChartView::setPriceWishes(std::function<std::vector<PriceSpan>()> wishes)
{
    m_wishes = std::move(wishes);
    refit();
}

void ChartView::fitViewport()
{
    m_viewport.setRoom({m_data.bars.size(), m_data.ahead.size(), m_data.period == ChartPeriod::Minute});
}

/// -1 without bars.
double ChartView::lastBar() const
{
    return static_cast<double>(m_data.bars.size()) - 1;
}

void ChartView::setSpan(const BarSpan &span)
{
    m_viewport.setSpan(span);
    refit();
}

void ChartView::zoom(double factor, double x)
{
    m_viewport.zoom(factor, m_geometry.xToBar(x));
    refit();
}

void ChartView::pan(double bars)
{
    m_viewport.pan(bars);
    refit();
}

void ChartView::showRecent()
{
    m_viewport.showRecent();
    refit();
}

void ChartView::showLast()
{
    m_viewport.showLast();
    refit();
}

void ChartView::showAll()
{
    m_viewport.showAll();
    refit();
}

void ChartView::refit()
{
    m_fittedSize = canvas()->size();
    m_visible->update(m_data.bars, span(), m_fittedSize.width());
    fitTime();
    fitPriceScale();
    fitVolume();
    replot();
    updateGeometryOfChart();
    updatePointedBar();
    m_foreground->update();
}

void ChartView::fitTime()
{
    const double barsPerLabel = span().width() * timeLabelRoom / std::max(1, m_fittedSize.width());
    std::vector<TimeTick> ticks = m_data.ahead.empty()
                                      ? timeTicks(m_data.bars, span(), barsPerLabel)
                                      : timeTicks(barsOfTimeAxis(m_data), span(), barsPerLabel);
    QList<double> positions;
    for (const TimeTick &tick : ticks) {
        positions.append(static_cast<double>(tick.bar));
    }
    m_timeLabels->setTicks(std::move(ticks));
    setAxisScaleDiv(xBottom, scaleDiv(span().first, span().last, positions));
}

void ChartView::fitPriceScale()
{
    if (m_visible->columns().empty()) {
        m_prices = {};
        return;
    }
    const double paneHeight = m_fittedSize.height() * priceShare;
    m_prices = fitPrices({m_visible->lowest(), m_visible->highest()},
                         m_wishes ? m_wishes() : std::vector<PriceSpan>(), paneHeight);
    const double below = (m_prices.high - m_prices.low) * (1 / priceShare - 1);
    setAxisScaleDiv(yRight, scaleDiv(m_prices.low - below, m_prices.high, priceTicks(m_prices, paneHeight)));
    const int widest = axisWidget(yRight)->fontMetrics().horizontalAdvance(priceText(m_prices.high * 10));
    axisScaleDraw(yRight)->setMinimumExtent(widest + axisScaleDraw(yRight)->spacing());
}

void ChartView::fitVolume()
{
    const double highest = std::max(1.0, m_visible->highestVolume());
    // The caption is as high in a short chart: there the columns give way, not the price pane.
    const double captionRoom = VolumeItem::captionRoom(canvas()->fontMetrics()) + 2; // rounding, twice
    const double room = 1 - priceShare - captionRoom / std::max(1, m_fittedSize.height());
    const double share = std::clamp(room, leastVolumeShare, volumeShare);
    setAxisScaleDiv(yLeft, scaleDiv(0, highest / share, {}));
    m_volume->setCaption(tr("Volume, highest %1").arg(volumeText(m_visible->highestVolume(), m_language)));
}

void ChartView::updateGeometryOfChart()
{
    const QwtScaleMap xMap = canvasMap(xBottom);
    const QwtScaleMap yMap = canvasMap(yRight);
    m_geometry.span = span();
    m_geometry.left = xMap.transform(span().first);
    m_geometry.right = xMap.transform(span().last);
    m_geometry.lowPrice = m_prices.low;
    m_geometry.highPrice = m_prices.high;
    m_geometry.top = yMap.transform(m_prices.high);
    m_geometry.bottom = yMap.transform(m_prices.low);
    Q_EMIT viewChanged();
}

void ChartView::updateLayout()
{
    QwtPlot::updateLayout();
    m_foreground->setGeometry(rect());
    if (canvas()->size() != m_fittedSize && !m_isLayingOut) {
        // Labels that come and go with the width may change it back; fitting twice would never end.
        const QScopedValueRollback<bool> once(m_isLayingOut, true);
        refit();
    } else {
        updateGeometryOfChart();
    }
}

int ChartView::barAt(double x) const
{
    const double bar = std::floor(m_geometry.xToBar(x) + 0.5);
    return static_cast<int>(std::clamp(bar, std::min(0.0, lastBar()), lastBar()));
}

std::optional<int> ChartView::barUnder(double x) const
{
    const double bar = std::floor(m_geometry.xToBar(x) + 0.5);
    return bar >= 0 && bar <= lastBar() ? std::optional(static_cast<int>(bar)) : std::nullopt;
}

QString ChartView::timeAt(double x) const
{
    if (const std::optional<int> bar = barUnder(x)) {
        return timeText(m_data.told(m_data.bars[static_cast<size_t>(*bar)]));
    }
    const double toCome = std::floor(m_geometry.xToBar(x) + 0.5) - lastBar() - 1;
    const bool isToCome = toCome >= 0 && toCome < static_cast<double>(m_data.ahead.size());
    return isToCome
               ? timeText(m_data.told({m_data.bars.back().date, m_data.ahead[static_cast<size_t>(toCome)]}))
               : QString();
}

void ChartView::setCrosshair(std::optional<QPoint> position)
{
    m_crosshair = position;
    m_foreground->setCrosshair(position);
    updatePointedBar();
}

void ChartView::paintAside()
{
    if (canvas()->size().isEmpty()) {
        return;
    }
    QPixmap aside(canvas()->size() * canvas()->devicePixelRatioF());
    aside.setDevicePixelRatio(canvas()->devicePixelRatioF());
    QPainter painter(&aside);
    drawCanvas(&painter);
}

void ChartView::announce(const QString &text)
{
    m_announcement = text;
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent event(this, text);
        QAccessible::updateAccessibility(&event);
    }
}

void ChartView::setRing(std::function<std::optional<QRectF>()> ring)
{
    m_foreground->setRing(std::move(ring));
}

void ChartView::updatePointedBar()
{
    const int bar = m_crosshair ? barUnder(m_crosshair->x()).value_or(-1) : -1;
    if (bar != m_pointedBar) {
        m_pointedBar = bar;
        Q_EMIT pointedBarChanged(bar);
    }
}

} // namespace Terminal
