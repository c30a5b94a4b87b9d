#include "terminal/chart/ColouredStrokes.h"

#include <QPainter>

namespace Terminal {

void ColouredStrokes::clear()
{
    // resize() keeps what is allocated, clear() would not.
    m_lines.resize(0);
    m_blocks.resize(0);
}

void ColouredStrokes::paint(QPainter *painter, const QColor &colour) const
{
    // A line is several times as fast as a block one pixel wide.
    painter->setPen(colour);
    painter->drawLines(m_lines);
    painter->setPen(Qt::NoPen);
    painter->setBrush(colour);
    painter->drawRects(m_blocks);
}

} // namespace Terminal
