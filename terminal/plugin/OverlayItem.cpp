#include "terminal/plugin/OverlayItem.h"

#include "terminal/chart/view/ChartView.h"
#include "terminal/plugin/HostPainter.h"

#include <QPainter>

namespace Terminal {

OverlayItem::OverlayItem(ChartView *chart, std::shared_ptr<OverlayHandle> overlay, GlyphSprites *sprites)
    : m_chart(chart),
      m_overlay(std::move(overlay)),
      m_sprites(sprites)
{
    setItemAttribute(QwtPlotItem::Legend, false);
    setYAxis(QwtPlot::yRight);
    setZ(10);
}

void OverlayItem::draw(QPainter *painter, const QwtScaleMap & /*xMap*/, const QwtScaleMap & /*yMap*/,
                       const QRectF & /*canvasRect*/) const
{
    m_marks.clear();
    m_labels.clear();
    if (!m_chart->chartGeometry().hasScale()) {
        return;
    }
    m_sprites->setLook(m_chart->theme(), painter->device()->devicePixelRatioF());
    HostPainter surface(painter, *m_chart, m_overlay->readableBars(), m_sprites, &m_marks);
    surface.setAmountsHidden(m_hidesAmounts);
    m_overlay->object()->paintIt(surface);
    surface.finish();
    m_labels = surface.labels();
}

} // namespace Terminal
