#pragma once

#include "terminal/chart/marks/MarkPainter.h"
#include "terminal/plugin/OverlayHandle.h"

#include <qwt_plot_item.h>

#include <QStringList>

#include <memory>

namespace Terminal {

class ChartView;

/// Lets an overlay draw itself on the price pane of a chart, and remembers where its marks are.
class OverlayItem : public QwtPlotItem
{
public:
    OverlayItem(ChartView *chart, std::shared_ptr<OverlayHandle> overlay, GlyphSprites *sprites);

    /// Hides figures in labels of the overlay.
    void setAmountsHidden(bool hidden) { m_hidesAmounts = hidden; }

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvasRect) const override;

    /// The marks of the last repaint.
    const DrawnMarks &marks() const { return m_marks; }

    /// The texts of its labels.
    const QStringList &labels() const { return m_labels; }

private:
    ChartView *m_chart;
    std::shared_ptr<OverlayHandle> m_overlay;
    GlyphSprites *m_sprites;
    bool m_hidesAmounts = false;
    mutable DrawnMarks m_marks;
    mutable QStringList m_labels;
};

} // namespace Terminal
