#pragma once

#include "terminal/chart/marks/glyphs/GlyphSet.h"
#include "terminal/chart/theme/ChartTheme.h"

#include <QRectF>

class QPainter;

namespace Terminal {

/// The mark of trades at their price, smaller than what overlays draw: a disc of buys, a square of sells, a
/// hexagon of both, with a letter, and the count of what is merged.
namespace TradeGlyphs {

/// Width of the mark of one trade, and height of all, in pixels.
constexpr double side = 13;

QSizeF size(TradeKind kind, int count);
void paint(QPainter *painter, const QRectF &box, TradeKind kind, int count, const ChartTheme &theme);

} // namespace TradeGlyphs

} // namespace Terminal
