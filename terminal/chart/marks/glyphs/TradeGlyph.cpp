#include "terminal/chart/marks/glyphs/TradeGlyph.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

constexpr double headHeight = 15;
constexpr double tipHalfWidth = 3;
constexpr double gapToBar = 1; ///< pixels between the tip and the bar
constexpr double textMargin = 4;
constexpr int letterPixels = 11;

} // namespace

QSizeF TradeGlyph::size(int count) const
{
    const double text = QFontMetricsF(glyphFont(letterPixels)).horizontalAdvance(glyphText(letter(), count));
    return {std::max(headHeight, std::ceil(text + 2 * textMargin)), seriesGlyphHeight};
}

QRectF TradeGlyph::headBox(const QRectF &box) const
{
    const double top = m_side == MarkSide::Above ? box.top() : box.bottom() - headHeight;
    return {box.left(), top, box.width(), headHeight};
}

QPainterPath TradeGlyph::tip(const QRectF &box) const
{
    const bool above = m_side == MarkSide::Above;
    const double base = above ? box.top() + headHeight - 1 : box.bottom() - headHeight + 1;
    const double end = above ? box.bottom() - gapToBar : box.top() + gapToBar;
    QPainterPath path;
    path.moveTo(box.center().x() - tipHalfWidth, base);
    path.lineTo(box.center().x() + tipHalfWidth, base);
    path.lineTo(box.center().x(), end);
    path.closeSubpath();
    return path;
}

QPainterPath TradeGlyph::outline(const QRectF &box) const
{
    return head(headBox(box)).united(tip(box));
}

void TradeGlyph::paint(QPainter *painter, const QRectF &box, int count, const ChartTheme &theme) const
{
    painter->setRenderHint(QPainter::Antialiasing);
    painter->fillPath(outline(box), colour(theme));
    painter->setPen(theme.fillText);
    painter->setFont(glyphFont(letterPixels));
    painter->drawText(headBox(box), Qt::AlignCenter | Qt::TextDontClip, glyphText(letter(), count));
}

} // namespace Terminal
