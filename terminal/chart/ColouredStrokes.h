#pragma once

#include <QColor>
#include <QLine>
#include <QRect>
#include <QVector>

class QPainter;

namespace Terminal {

/// What a repaint draws in one colour, on whole pixels: upright lines one pixel wide, and blocks. It is
/// painted in two calls, however much it is, and kept so that the next repaint need not allocate.
class ColouredStrokes
{
public:
    /// Forgets the strokes, but not the memory.
    void clear();
    /// Pixels (x, top) to (x, bottom), both included.
    void addLine(int x, int top, int bottom) { m_lines.append(QLine(x, top, x, bottom)); }
    void addBlock(const QRect &block) { m_blocks.append(block); }
    void paint(QPainter *painter, const QColor &colour) const;

private:
    QVector<QLine> m_lines;
    QVector<QRect> m_blocks;
};

} // namespace Terminal
