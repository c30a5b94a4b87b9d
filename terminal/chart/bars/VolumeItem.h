#pragma once

#include "terminal/chart/bars/ColouredStrokes.h"
#include "terminal/chart/bars/VisibleBars.h"
#include "terminal/chart/theme/ChartTheme.h"

#include <qwt_plot_item.h>

namespace Terminal {

/// The volume pane below the candles: one column per visible bar, coloured as its candle.
class VolumeItem : public QwtPlotItem
{
public:
    /// `bars` is borrowed and must live as long as the item.
    explicit VolumeItem(const VisibleBars *bars);

    void setTheme(const ChartTheme &theme) { m_theme = theme; }
    /// The words at the upper left edge of the pane.
    void setCaption(const QString &caption) { m_caption = caption; }

    /// The pixels that border and caption take above the highest column.
    static double captionRoom(const QFontMetrics &font);

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvasRect) const override;

private:
    void drawColumns(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap) const;
    void drawCaption(QPainter *painter, double paneTop, const QRectF &canvasRect) const;

    const VisibleBars *m_bars;
    ChartTheme m_theme;
    QString m_caption;
    mutable ColouredStrokes m_rising;
    mutable ColouredStrokes m_falling;
};

} // namespace Terminal
