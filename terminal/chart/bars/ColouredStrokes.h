#pragma once

#include <QColor>
#include <QRect>
#include <QVector>

class QPainter;

namespace Terminal {

/// What a repaint draws in one colour, on whole pixels. It is painted in one call, however much it is,
/// and kept so that the next repaint need not allocate.
class ColouredStrokes
{
public:
    /// Forgets the strokes, but not the memory.
    void clear();
    /// Pixels (x, top) to (x, bottom), both included.
    void addLine(int x, int top, int bottom) { addBlock(QRect(QPoint(x, top), QPoint(x, bottom))); }
    void addBlock(const QRect &block) { m_blocks.append(block); }
    void paint(QPainter *painter, const QColor &colour) const;

private:
    QVector<QRect> m_blocks;
};

} // namespace Terminal
