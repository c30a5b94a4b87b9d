#include "terminal/chart/bars/VolumeItem.h"

#include "terminal/chart/bars/CandleCurve.h"

#include <qwt_plot.h>
#include <qwt_scale_map.h>

#include <QPainter>

#include <cmath>

namespace Terminal {

namespace {

constexpr double captionGap = 6; ///< pixels between the caption and the pane's edges

QColor softened(const QColor &colour, const QColor &background)
{
    constexpr double share = 0.62;
    const auto mix = [](int above, int below) {
        return static_cast<int>(above * share + below * (1 - share));
    };
    return {mix(colour.red(), background.red()), mix(colour.green(), background.green()),
            mix(colour.blue(), background.blue())};
}

} // namespace

VolumeItem::VolumeItem(const VisibleBars *bars) : m_bars(bars)
{
    setItemAttribute(QwtPlotItem::Legend, false);
    setYAxis(QwtPlot::yLeft);
}

double VolumeItem::captionRoom(const QFontMetrics &font)
{
    return font.height() + 2 * captionGap;
}

void VolumeItem::draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                      const QRectF &canvasRect) const
{
    drawColumns(painter, xMap, yMap);
    drawCaption(painter, yMap.transform(m_bars->highestVolume()), canvasRect);
}

void VolumeItem::drawColumns(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap) const
{
    m_rising.clear();
    m_falling.clear();
    const int width = candleWidth(xMap.transform(1) - xMap.transform(0));
    const int bottom = static_cast<int>(std::floor(yMap.transform(0)));
    for (const BarColumn &column : m_bars->columns()) {
        ColouredStrokes &strokes = column.rises() ? m_rising : m_falling;
        const int x = static_cast<int>(std::floor(xMap.transform(column.position)));
        const int top = static_cast<int>(std::floor(yMap.transform(column.volume)));
        if (width == 1) {
            strokes.addLine(x, top, bottom);
        } else {
            strokes.addBlock(QRect(x - width / 2, top, width, bottom - top + 1));
        }
    }
    m_rising.paint(painter, softened(m_theme.rise, m_theme.background));
    m_falling.paint(painter, softened(m_theme.fall, m_theme.background));
}

void VolumeItem::drawCaption(QPainter *painter, double paneTop, const QRectF &canvasRect) const
{
    const double line = std::floor(paneTop - captionRoom(painter->fontMetrics()));
    painter->fillRect(QRectF(canvasRect.left(), line, canvasRect.width(), 1), m_theme.border);
    painter->setPen(m_theme.mutedText);
    painter->drawText(
        QPointF(canvasRect.left() + captionGap, line + captionGap + painter->fontMetrics().ascent()),
        m_caption);
}

} // namespace Terminal
