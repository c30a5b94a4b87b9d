#include "terminal/chart/bars/CandleCurve.h"

#include <qwt_scale_map.h>

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

constexpr double bodyShare = 0.72;        ///< of the room that a bar has
constexpr int narrowestHollow = 5;        ///< a narrower body would be all border
constexpr int widestBody = 41;            ///< a wider one looks like a block
constexpr double narrowestBodyRoom = 3.0; ///< pixels a bar needs to have a body

int pixelOf(const QwtScaleMap &map, double value)
{
    return static_cast<int>(std::floor(map.transform(value)));
}

} // namespace

int candleWidth(double barWidth)
{
    if (barWidth < narrowestBodyRoom) {
        return 1;
    }
    const int width = static_cast<int>(barWidth * bodyShare);
    return std::min(widestBody, width % 2 == 0 ? width - 1 : width);
}

CandleCurve::CandleCurve(VisibleBars *bars) : m_bars(bars)
{
    setSamples(bars);
    setItemAttribute(QwtPlotItem::Legend, false);
    setRenderHint(QwtPlotItem::RenderAntialiased, false);
}

void CandleCurve::drawSymbols(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                              const QRectF & /*canvasRect*/, int from, int to) const
{
    m_rising.clear();
    m_falling.clear();
    m_hollows.clear();
    const int width = candleWidth(xMap.transform(1) - xMap.transform(0));
    for (int i = from; i <= to; ++i) {
        addCandle(m_bars->columns()[static_cast<size_t>(i)], xMap, yMap, width);
    }
    m_falling.paint(painter, m_theme.fall);
    m_rising.paint(painter, m_theme.rise);
    m_hollows.paint(painter, m_theme.background);
}

void CandleCurve::addCandle(const BarColumn &bar, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                            int width) const
{
    ColouredStrokes &strokes = bar.rises() ? m_rising : m_falling;
    const int x = pixelOf(xMap, bar.position);
    strokes.addLine(x, pixelOf(yMap, bar.high), pixelOf(yMap, bar.low));
    if (width == 1) {
        return;
    }
    const QRect body(QPoint(x - width / 2, pixelOf(yMap, std::max(bar.open, bar.close))),
                     QPoint(x + width / 2, pixelOf(yMap, std::min(bar.open, bar.close))));
    strokes.addBlock(body);
    if (bar.rises() && width >= narrowestHollow && body.height() > 2) {
        m_hollows.addBlock(body.adjusted(1, 1, -1, -1));
    }
}

} // namespace Terminal
