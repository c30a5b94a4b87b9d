#include "terminal/chart/marks/glyphs/BuyGlyph.h"

namespace Terminal {

QPainterPath BuyGlyph::head(const QRectF &box) const
{
    QPainterPath path;
    path.addRoundedRect(box, box.height() / 2, box.height() / 2);
    return path;
}

} // namespace Terminal
