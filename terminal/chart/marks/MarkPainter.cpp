#include "terminal/chart/marks/MarkPainter.h"

#include <QPainter>

namespace Terminal {

MarkPainter::MarkPainter(const ChartGeometry &geometry, const VisibleBars &bars, GlyphSprites *sprites,
                         DrawnMarks *marks)
    : m_series(geometry, bars),
      m_orders(geometry, marks),
      m_sprites(sprites),
      m_marks(marks)
{
}

void MarkPainter::paint(QPainter *painter)
{
    m_series.moveTo(m_marks, m_sprites);
    m_orders.finish(m_sprites);
    for (const DrawnMark &mark : m_marks->all()) {
        painter->drawPixmap(mark.box.topLeft(), m_sprites->sprite(mark.glyph, mark.count));
    }
}

} // namespace Terminal
