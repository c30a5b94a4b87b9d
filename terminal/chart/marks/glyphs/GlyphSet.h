#pragma once

#include "terminal/chart/marks/glyphs/MarkerGlyph.h"
#include "terminal/chart/marks/glyphs/OrderGlyph.h"
#include "terminal/chart/marks/glyphs/TradeGlyph.h"

namespace Terminal {

// The numbers by which overlays ask for marks.
constexpr int seriesStyles = 6;    ///< 0/1 buy, 2/3 sell, 4/5 both; even above, odd below the bar
constexpr int firstOrderKind = 20; ///< 20/21/22 buy waiting, partly dealt, dealt; 23/24/25 sell
constexpr int orderKinds = 6;

constexpr bool isSeriesStyle(int style)
{
    return style >= 0 && style < seriesStyles;
}

constexpr bool isOrderKind(int kind)
{
    return kind >= firstOrderKind && kind < firstOrderKind + orderKinds;
}

/// Number of a glyph in the set.
using GlyphNumber = int;

constexpr GlyphNumber seriesGlyph(int style)
{
    return style;
}

constexpr GlyphNumber orderGlyph(int kind, EdgeClamp clamp)
{
    return seriesStyles + static_cast<int>(clamp) * orderKinds + kind - firstOrderKind;
}

const MarkerGlyph &glyph(GlyphNumber number);

} // namespace Terminal
