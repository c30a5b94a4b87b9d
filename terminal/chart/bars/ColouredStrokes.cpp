#include "terminal/chart/bars/ColouredStrokes.h"

#include <QPainter>

namespace Terminal {

void ColouredStrokes::clear()
{
    // resize() keeps what is allocated, clear() would not.
    m_blocks.resize(0);
}

void ColouredStrokes::paint(QPainter *painter, const QColor &colour) const
{
    painter->setPen(Qt::NoPen);
    painter->setBrush(colour);
    painter->drawRects(m_blocks);
}

} // namespace Terminal
