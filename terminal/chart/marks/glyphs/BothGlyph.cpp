#include "terminal/chart/marks/glyphs/BothGlyph.h"

namespace Terminal {

QPainterPath BothGlyph::head(const QRectF &box) const
{
    QPainterPath path;
    const double notch = box.height() / 3;
    path.moveTo(box.left(), box.center().y());
    path.lineTo(box.left() + notch, box.top());
    path.lineTo(box.right() - notch, box.top());
    path.lineTo(box.right(), box.center().y());
    path.lineTo(box.right() - notch, box.bottom());
    path.lineTo(box.left() + notch, box.bottom());
    path.closeSubpath();
    return path;
}

} // namespace Terminal
