#include "terminal/chart/marks/glyphs/GlyphSet.h"

#include "terminal/chart/marks/glyphs/BothGlyph.h"
#include "terminal/chart/marks/glyphs/BuyGlyph.h"
#include "terminal/chart/marks/glyphs/SellGlyph.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace Terminal {

namespace {

using Glyphs = std::vector<std::unique_ptr<MarkerGlyph>>;

std::unique_ptr<MarkerGlyph> makeGlyph(const SeriesStyle &style)
{
    switch (style.kind) {
    case TradeKind::Buy:
        return std::make_unique<BuyGlyph>(style.side);
    case TradeKind::Sell:
        return std::make_unique<SellGlyph>(style.side);
    case TradeKind::Both:
        return std::make_unique<BothGlyph>(style.side);
    }
    return nullptr;
}

/// In the order of their numbers.
Glyphs makeGlyphs()
{
    Glyphs glyphs;
    for (const SeriesStyle &style : seriesStyles) {
        glyphs.push_back(makeGlyph(style));
    }
    for (const EdgeClamp clamp : edgeClamps) {
        for (const OrderKind &kind : orderKinds) {
            glyphs.push_back(std::make_unique<OrderGlyph>(kind.side, kind.progress, clamp));
        }
    }
    return glyphs;
}

} // namespace

GlyphNumber seriesGlyph(TradeKind kind, MarkSide side)
{
    const auto *const style =
        std::find_if(seriesStyles.begin(), seriesStyles.end(),
                     [kind, side](const SeriesStyle &row) { return row.kind == kind && row.side == side; });
    return seriesGlyph(style->number);
}

const MarkerGlyph &glyph(GlyphNumber number)
{
    static const Glyphs glyphs = makeGlyphs();
    return *glyphs.at(static_cast<size_t>(number));
}

} // namespace Terminal
