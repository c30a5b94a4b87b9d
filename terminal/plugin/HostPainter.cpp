#include "terminal/plugin/HostPainter.h"

#include "terminal/chart/axes/BarSpan.h"
#include "terminal/chart/lines/LineDecimator.h"
#include "terminal/chart/lines/SeriesLabel.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/plugin/HiddenAmounts.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

/// Where a price lies that the scale does not show: its label is held at that edge.
QString directionOf(double price, const ChartGeometry &geometry)
{
    return price > geometry.highPrice  ? QStringLiteral(u" ↑")
           : price < geometry.lowPrice ? QStringLiteral(u" ↓")
                                       : QString();
}

/// The price pane from one side of the canvas to the other, in whole pixels.
QRect pricePaneOf(const ChartView &chart)
{
    const int top = static_cast<int>(std::floor(chart.chartGeometry().top));
    const int bottom = static_cast<int>(std::ceil(chart.chartGeometry().bottom));
    return {0, top, chart.canvas()->width(), bottom - top};
}

} // namespace

HostPainter::HostPainter(QPainter *painter, const ChartView &chart, int readableBars, GlyphSprites *sprites,
                         DrawnMarks *marks)
    : m_painter(painter),
      m_chart(chart),
      m_markPainter(chart.chartGeometry(), chart.visibleBars(), sprites, marks)
{
    const BarRange range = barsInView(chart.span(), static_cast<size_t>(std::max(0, readableBars)));
    m_firstBar = static_cast<int>(range.first);
    m_endBar = static_cast<int>(range.end);
}

void HostPainter::finish()
{
    m_markPainter.paint(m_painter);
}

void HostPainter::endPaint()
{
    // Marks are collected until finish(): not every overlay closes its drawing.
}

void HostPainter::drawSeriesLabel(const double *values, const char *text, int /*index*/)
{
    if (values == nullptr || text == nullptr) {
        return;
    }
    for (int bar = m_endBar - 1; bar >= m_firstBar; --bar) {
        if (std::isfinite(values[bar])) {
            const QString label = QString::fromUtf8(text);
            m_labels.append((m_hidesAmounts ? withoutAmounts(label) : label) +
                            directionOf(values[bar], m_chart.chartGeometry()));
            paintSeriesLabel(m_painter, m_chart.chartGeometry(), m_chart.theme(), values[bar],
                             m_labels.back());
            return;
        }
    }
}

void HostPainter::drawLineSeries(int /*reserved*/, const double *values, double width)
{
    if (values == nullptr || m_firstBar == m_endBar) {
        return;
    }
    const ChartGeometry geometry =
        m_chart.chartGeometry(); // a copy: nothing can change it on the way along the line
    m_painter->save();
    m_painter->setClipRect(pricePaneOf(m_chart), Qt::IntersectClip);
    m_painter->setPen(QPen(m_chart.theme().line, width));
    LineDecimator line(m_painter);
    for (int bar = m_firstBar; bar < m_endBar; ++bar) {
        line.add(geometry.barToX(bar), geometry.priceToY(values[bar]));
    }
    line.finish();
    m_painter->restore();
}

void HostPainter::drawMarkerSeries(int /*reserved*/, const double *flags, const double *prices, int style,
                                   int /*variant*/)
{
    if (flags == nullptr || prices == nullptr || !isSeriesStyle(style)) {
        return;
    }
    for (int bar = m_firstBar; bar < m_endBar; ++bar) {
        if (flags[bar] == 1.0 && std::isfinite(prices[bar])) {
            m_markPainter.addSeriesMark(bar, prices[bar], style);
        }
    }
}

void HostPainter::drawMarker(int /*reserved*/, int bar, int kind, int atLow, double price)
{
    if (bar >= m_firstBar && bar < m_endBar && isOrderKind(kind) && std::isfinite(price)) {
        m_markPainter.addOrderMark(bar, price, kind, atLow == 1);
    }
}

} // namespace Terminal
