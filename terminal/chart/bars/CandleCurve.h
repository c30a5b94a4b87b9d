#pragma once

#include "terminal/chart/bars/ColouredStrokes.h"
#include "terminal/chart/bars/VisibleBars.h"
#include "terminal/chart/theme/ChartTheme.h"

#include <qwt_plot_tradingcurve.h>

namespace Terminal {

/// Pixel width of a candle's body for bars that lie `barWidth` pixels apart: odd, so that the wick
/// stands in its middle; 1 when there is only room for the wick.
int candleWidth(double barWidth);

/// Candlesticks on whole pixels: rising ones hollow, falling ones filled, so that they differ in more
/// than colour. Painted in a few calls, however many there are.
class CandleCurve : public QwtPlotTradingCurve
{
public:
    /// Takes over `bars`.
    explicit CandleCurve(VisibleBars *bars);
    void setTheme(const ChartTheme &theme) { m_theme = theme; }

protected:
    void drawSymbols(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                     const QRectF &canvasRect, int from, int to) const override;

private:
    void addCandle(const BarColumn &bar, const QwtScaleMap &xMap, const QwtScaleMap &yMap, int width) const;

    const VisibleBars *m_bars;
    ChartTheme m_theme;
    mutable ColouredStrokes m_rising;
    mutable ColouredStrokes m_falling;
    mutable ColouredStrokes m_hollows; ///< the insides of rising bodies
};

} // namespace Terminal
