#include "terminal/trades/TradeGlyphs.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Terminal::TradeGlyphs {

namespace {

constexpr int letterPixels = 9;
constexpr double textMargin = 3;
constexpr double slant = 3.5;

QChar letterOf(TradeKind kind)
{
    switch (kind) {
    case TradeKind::Buy:
        return QLatin1Char('B');
    case TradeKind::Sell:
        return QLatin1Char('S');
    case TradeKind::Both:
        return QLatin1Char('T');
    }
    return {};
}

QColor colourOf(TradeKind kind, const ChartTheme &theme)
{
    switch (kind) {
    case TradeKind::Buy:
        return theme.rise;
    case TradeKind::Sell:
        return theme.fall;
    case TradeKind::Both:
        return theme.both;
    }
    return {};
}

QPolygonF hexagon(const QRectF &box)
{
    const double middle = box.center().y();
    return QPolygonF{{QPointF(box.left(), middle), QPointF(box.left() + slant, box.top()),
                      QPointF(box.right() - slant, box.top()), QPointF(box.right(), middle),
                      QPointF(box.right() - slant, box.bottom()), QPointF(box.left() + slant, box.bottom())}};
}

void paintBody(QPainter *painter, const QRectF &box, TradeKind kind)
{
    switch (kind) {
    case TradeKind::Buy:
        painter->drawRoundedRect(box, side / 2, side / 2);
        return;
    case TradeKind::Sell:
        painter->drawRect(box);
        return;
    case TradeKind::Both:
        painter->drawPolygon(hexagon(box));
        return;
    }
}

} // namespace

QSizeF size(TradeKind kind, int count)
{
    const QString text = glyphText(letterOf(kind), count);
    const double width = QFontMetricsF(glyphFont(letterPixels)).horizontalAdvance(text) + 2 * textMargin;
    return {count == 1 ? side : std::max(side, std::ceil(width)), side};
}

void paint(QPainter *painter, const QRectF &box, TradeKind kind, int count, const ChartTheme &theme)
{
    painter->setPen(QPen(theme.background, 1.5));
    painter->setBrush(colourOf(kind, theme));
    paintBody(painter, box, kind);
    painter->setPen(theme.fillText);
    painter->setFont(glyphFont(letterPixels));
    painter->drawText(box, Qt::AlignCenter | Qt::TextDontClip, glyphText(letterOf(kind), count));
}

} // namespace Terminal::TradeGlyphs
