#include "terminal/chart/view/ChartView.h"

#include "terminal/chart/axes/AxisLabels.h"
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
#include <qwt_scale_engine.h>
#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>

#include <QPainter>
#include <QPixmap>

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

constexpr double priceShare = 0.78;      ///< of the canvas height that the price pane has
constexpr double volumeShare = 0.165;    ///< the same of the highest volume column
constexpr double fewestBars = 10;        ///< that may be zoomed to
constexpr double recentBars = 150;       ///< that a new chart shows
constexpr double airShare = 0.08;        ///< room right of the last bar for labels, of what a new chart shows
constexpr double firstLabelShare = 0.01; ///< room for the label under a day's first minute
constexpr double timeLabelRoom = 110;    ///< pixels from one time label to the next
constexpr double priceLabelRoom = 56;    ///< the same for prices
constexpr int axisFontPixels = 12;
constexpr double timeAxisHeight = 30;

QwtScaleDiv scaleDiv(double lower, double upper, const QList<double> &ticks)
{
    return QwtScaleDiv(lower, upper, {}, {}, ticks);
}

QList<double> priceTicks(const PriceSpan &prices, double height)
{
    const int most = std::max(2, static_cast<int>(height / priceLabelRoom));
    const QwtScaleDiv div = QwtLinearScaleEngine().divideScale(prices.low, prices.high, most, 0);
    QList<double> ticks;
    const double edge = (prices.high - prices.low) * 0.02;
    for (const double tick : div.ticks(QwtScaleDiv::MajorTick)) {
        if (tick > prices.low + edge && tick < prices.high - edge) {
            ticks.append(tick);
        }
    }
    return ticks;
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
    setCrosshair({});
    showRecent();
    Q_EMIT dataChanged();
}

void ChartView::append(const Bars &bars)
{
    if (bars.empty()) {
        return;
    }
    const auto lastBefore = static_cast<double>(m_data.bars.size()) - 1;
    m_data.bars.insert(m_data.bars.end(), bars.begin(), bars.end());
    m_data.ahead.erase(m_data.ahead.begin(),
                       std::upper_bound(m_data.ahead.begin(), m_data.ahead.end(), m_data.bars.back().minute));
    const auto last = static_cast<double>(m_data.bars.size()) - 1;
    const bool showedLast = m_span.first <= lastBefore && lastBefore <= m_span.last;
    if (showedLast && last > m_span.last) {
        const double moved = last - lastBefore;
        m_span = held({m_span.first + moved, m_span.last + moved});
    }
    Q_EMIT barsAppended();
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

bool ChartView::showsWholeDay() const
{
    return m_data.period == ChartPeriod::Minute;
}

double ChartView::roomForBars() const
{
    return static_cast<double>(m_data.bars.size() + m_data.ahead.size());
}

BarSpan ChartView::wholeSpan() const
{
    const double count = roomForBars();
    const double shown = showsWholeDay() ? count : std::min(count, recentBars);
    const double left = showsWholeDay() ? count * firstLabelShare : 0;
    return {-0.5 - left, std::max(count, 1.0) - 0.5 + shown * airShare};
}

BarSpan ChartView::held(BarSpan span) const
{
    const BarSpan whole = wholeSpan();
    const double width = std::clamp(span.width(), std::min(fewestBars, whole.width()), whole.width());
    const double first = std::clamp(span.first, whole.first, whole.last - width);
    return {first, first + width};
}

void ChartView::setSpan(const BarSpan &span)
{
    m_span = held(span);
    refit();
}

void ChartView::zoom(double factor, double x)
{
    const double bar = m_geometry.xToBar(x);
    const double limited = held({0, m_span.width() * factor}).width() / m_span.width();
    setSpan({bar - (bar - m_span.first) * limited, bar + (m_span.last - bar) * limited});
}

void ChartView::pan(double bars)
{
    setSpan({m_span.first + bars, m_span.last + bars});
}

void ChartView::showRecent()
{
    const BarSpan whole = wholeSpan();
    setSpan(showsWholeDay() ? whole : BarSpan{whole.last - recentBars, whole.last});
}

void ChartView::showAll()
{
    setSpan(wholeSpan());
}

void ChartView::refit()
{
    m_fittedSize = canvas()->size();
    m_visible->update(m_data.bars, m_span, m_fittedSize.width());
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
    const double barsPerLabel = m_span.width() * timeLabelRoom / std::max(1, m_fittedSize.width());
    std::vector<TimeTick> ticks = m_data.ahead.empty()
                                      ? timeTicks(m_data.bars, m_span, barsPerLabel)
                                      : timeTicks(barsOfTimeAxis(m_data), m_span, barsPerLabel);
    QList<double> positions;
    for (const TimeTick &tick : ticks) {
        positions.append(static_cast<double>(tick.bar));
    }
    m_timeLabels->setTicks(std::move(ticks));
    setAxisScaleDiv(xBottom, scaleDiv(m_span.first, m_span.last, positions));
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
    setAxisScaleDiv(yLeft, scaleDiv(0, highest / volumeShare, {}));
    m_volume->setCaption(tr("Volume, highest %1").arg(volumeText(m_visible->highestVolume(), m_language)));
}

void ChartView::updateGeometryOfChart()
{
    const QwtScaleMap xMap = canvasMap(xBottom);
    const QwtScaleMap yMap = canvasMap(yRight);
    m_geometry.span = m_span;
    m_geometry.left = xMap.transform(m_span.first);
    m_geometry.right = xMap.transform(m_span.last);
    m_geometry.lowPrice = m_prices.low;
    m_geometry.highPrice = m_prices.high;
    m_geometry.top = yMap.transform(m_prices.high);
    m_geometry.bottom = yMap.transform(m_prices.low);
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
    const auto last = static_cast<double>(m_data.bars.size()) - 1;
    return static_cast<int>(std::clamp(bar, std::min(0.0, last), last));
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
    const int bar = m_crosshair ? barAt(m_crosshair->x()) : -1;
    if (bar != m_pointedBar) {
        m_pointedBar = bar;
        Q_EMIT pointedBarChanged(bar);
    }
}

} // namespace Terminal
