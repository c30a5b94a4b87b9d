#include "terminal/chart/marks/glyphs/SellGlyph.h"

namespace Terminal {

QPainterPath SellGlyph::head(const QRectF &box) const
{
    QPainterPath path;
    path.addRoundedRect(box, 2, 2);
    return path;
}

} // namespace Terminal
