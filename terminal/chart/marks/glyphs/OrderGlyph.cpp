#include "terminal/chart/marks/glyphs/OrderGlyph.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

constexpr double peak = 3;        ///< height of the point of a body
constexpr double arrowHeight = 4; ///< of a clamped order's arrowhead
constexpr double arrowHalfWidth = 5;
constexpr double margin = 1; ///< room for the border's stroke
constexpr double textMargin = 4;
constexpr int letterPixels = 9;

QChar letterOf(Direction side)
{
    return QLatin1Char(side == Direction::Buy ? 'B' : 'S');
}

} // namespace

QSizeF OrderGlyph::size(int count) const
{
    const double text =
        QFontMetricsF(glyphFont(letterPixels)).horizontalAdvance(glyphText(letterOf(m_side), count));
    return {std::max(orderGlyphSize, std::ceil(text + 2 * textMargin)), orderGlyphSize};
}

double OrderGlyph::filledShare() const
{
    switch (m_progress) {
    case OrderProgress::Waiting:
        return 0;
    case OrderProgress::PartlyDealt:
        return 0.5;
    case OrderProgress::Dealt:
        return 1;
    }
    return 0;
}

QRectF OrderGlyph::bodyBox(const QRectF &box) const
{
    const QRectF inner = box.adjusted(margin, margin, -margin, -margin);
    switch (m_clamp) {
    case EdgeClamp::None:
        return inner;
    case EdgeClamp::AtTop:
        return inner.adjusted(0, arrowHeight, 0, 0);
    case EdgeClamp::AtBottom:
        return inner.adjusted(0, 0, 0, -arrowHeight);
    }
    return inner;
}

QPainterPath OrderGlyph::body(const QRectF &box) const
{
    const QRectF inner = bodyBox(box);
    const bool buys = m_side == Direction::Buy;
    const double top = buys ? inner.top() + peak : inner.top();
    const double bottom = buys ? inner.bottom() : inner.bottom() - peak;
    QPainterPath path(QPointF(inner.left(), top));
    if (buys) {
        path.lineTo(inner.center().x(), inner.top());
    }
    path.lineTo(inner.right(), top);
    path.lineTo(inner.right(), bottom);
    if (!buys) {
        path.lineTo(inner.center().x(), inner.bottom());
    }
    path.lineTo(inner.left(), bottom);
    path.closeSubpath();
    return path;
}

QPainterPath OrderGlyph::arrowhead(const QRectF &box) const
{
    if (m_clamp == EdgeClamp::None) {
        return {};
    }
    const bool up = m_clamp == EdgeClamp::AtTop;
    const double tip = up ? box.top() : box.bottom();
    const double base = up ? tip + arrowHeight : tip - arrowHeight;
    QPainterPath path(QPointF(box.center().x() - arrowHalfWidth, base));
    path.lineTo(box.center().x(), tip);
    path.lineTo(box.center().x() + arrowHalfWidth, base);
    path.closeSubpath();
    return path;
}

QPainterPath OrderGlyph::outline(const QRectF &box) const
{
    return body(box).united(arrowhead(box));
}

void OrderGlyph::paint(QPainter *painter, const QRectF &box, int count, const ChartTheme &theme) const
{
    const QColor colour = m_side == Direction::Buy ? theme.rise : theme.fall;
    const QRectF inner = bodyBox(box);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(colour, 1.4));
    painter->setBrush(theme.background);
    painter->drawPath(body(box));
    painter->save();
    painter->setClipRect(inner.adjusted(0, inner.height() * (1 - filledShare()), 0, 0), Qt::IntersectClip);
    painter->fillPath(body(box), colour);
    painter->restore();
    painter->fillPath(arrowhead(box), colour);
    painter->setPen(m_progress == OrderProgress::Waiting ? colour
                    : m_progress == OrderProgress::Dealt ? theme.fillText
                                                         : theme.text);
    painter->setFont(glyphFont(letterPixels));
    painter->drawText(inner, Qt::AlignCenter | Qt::TextDontClip, glyphText(letterOf(m_side), count));
}

} // namespace Terminal
