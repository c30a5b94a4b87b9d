#include "terminal/chart/marks/glyphs/GlyphSet.h"

#include "terminal/chart/marks/glyphs/BothGlyph.h"
#include "terminal/chart/marks/glyphs/BuyGlyph.h"
#include "terminal/chart/marks/glyphs/SellGlyph.h"

#include <memory>
#include <vector>

namespace Terminal {

namespace {

using Glyphs = std::vector<std::unique_ptr<MarkerGlyph>>;

void addOrderGlyphs(Glyphs *glyphs, EdgeClamp clamp)
{
    for (const OrderSide side : {OrderSide::Buy, OrderSide::Sell}) {
        for (const auto progress :
             {OrderProgress::Waiting, OrderProgress::PartlyDealt, OrderProgress::Dealt}) {
            glyphs->push_back(std::make_unique<OrderGlyph>(side, progress, clamp));
        }
    }
}

/// In the order of their numbers.
Glyphs makeGlyphs()
{
    Glyphs glyphs;
    glyphs.push_back(std::make_unique<BuyGlyph>(MarkSide::Above));
    glyphs.push_back(std::make_unique<BuyGlyph>(MarkSide::Below));
    glyphs.push_back(std::make_unique<SellGlyph>(MarkSide::Above));
    glyphs.push_back(std::make_unique<SellGlyph>(MarkSide::Below));
    glyphs.push_back(std::make_unique<BothGlyph>(MarkSide::Above));
    glyphs.push_back(std::make_unique<BothGlyph>(MarkSide::Below));
    for (const EdgeClamp clamp : {EdgeClamp::None, EdgeClamp::AtTop, EdgeClamp::AtBottom}) {
        addOrderGlyphs(&glyphs, clamp);
    }
    return glyphs;
}

} // namespace

const MarkerGlyph &glyph(GlyphNumber number)
{
    static const Glyphs glyphs = makeGlyphs();
    return *glyphs.at(static_cast<size_t>(number));
}

} // namespace Terminal
