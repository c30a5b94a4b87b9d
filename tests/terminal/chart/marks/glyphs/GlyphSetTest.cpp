#include "terminal/chart/marks/glyphs/GlyphSet.h"
#include "terminal/chart/marks/glyphs/BothGlyph.h"
#include "terminal/chart/marks/glyphs/BuyGlyph.h"
#include "terminal/chart/marks/glyphs/SellGlyph.h"

#include <gmock/gmock.h>

#include <QImage>
#include <QPainter>

namespace Terminal {
namespace {

QImage picture(const MarkerGlyph &glyph)
{
    const ChartTheme theme = makeTheme(ThemeKind::Dark, RiseColour::Red);
    QImage image(glyph.size(1).toSize(), QImage::Format_RGB32);
    image.fill(theme.background);
    QPainter painter(&image);
    glyph.paint(&painter, image.rect(), 1, theme);
    return image;
}

TEST(GlyphSet, GivesEachStyleOfBarsItsShape)
{
    EXPECT_EQ(picture(glyph(seriesGlyph(0))), picture(BuyGlyph(MarkSide::Above)));
    EXPECT_EQ(picture(glyph(seriesGlyph(1))), picture(BuyGlyph(MarkSide::Below)));
    EXPECT_EQ(picture(glyph(seriesGlyph(2))), picture(SellGlyph(MarkSide::Above)));
    EXPECT_EQ(picture(glyph(seriesGlyph(3))), picture(SellGlyph(MarkSide::Below)));
    EXPECT_EQ(picture(glyph(seriesGlyph(4))), picture(BothGlyph(MarkSide::Above)));
    EXPECT_EQ(picture(glyph(seriesGlyph(5))), picture(BothGlyph(MarkSide::Below)));
}

TEST(GlyphSet, GivesEachKindOfOrdersItsShapeAtEachEdge)
{
    for (const EdgeClamp clamp : edgeClamps) {
        const auto shape = [clamp](int kind) { return picture(glyph(orderGlyph(kind, clamp))); };
        const auto order = [clamp](Direction side, OrderProgress progress) {
            return picture(OrderGlyph(side, progress, clamp));
        };
        EXPECT_EQ(shape(20), order(Direction::Buy, OrderProgress::Waiting));
        EXPECT_EQ(shape(21), order(Direction::Buy, OrderProgress::PartlyDealt));
        EXPECT_EQ(shape(22), order(Direction::Buy, OrderProgress::Dealt));
        EXPECT_EQ(shape(23), order(Direction::Sell, OrderProgress::Waiting));
        EXPECT_EQ(shape(24), order(Direction::Sell, OrderProgress::PartlyDealt));
        EXPECT_EQ(shape(25), order(Direction::Sell, OrderProgress::Dealt));
    }
}

TEST(GlyphSet, KnowsNoOtherNumbersOfOverlays)
{
    EXPECT_FALSE(isSeriesStyle(-1));
    EXPECT_FALSE(isSeriesStyle(6));
    EXPECT_FALSE(isOrderKind(19));
    EXPECT_FALSE(isOrderKind(26));
}

TEST(GlyphSet, FindsTheGlyphOfAKindAndASide)
{
    for (const SeriesStyle &style : seriesStyles) {
        EXPECT_EQ(seriesGlyph(style.kind, style.side), seriesGlyph(style.number));
    }
}

TEST(GlyphSet, TellsWhatAGlyphStandsFor)
{
    EXPECT_EQ(seriesStyleOf(seriesGlyph(3)).kind, TradeKind::Sell);
    for (const EdgeClamp clamp : edgeClamps) {
        EXPECT_TRUE(isOrderGlyph(orderGlyph(20, clamp)));
        EXPECT_EQ(orderKindOf(orderGlyph(24, clamp)).side, Direction::Sell);
        EXPECT_EQ(orderKindOf(orderGlyph(24, clamp)).progress, OrderProgress::PartlyDealt);
    }
    EXPECT_FALSE(isOrderGlyph(seriesGlyph(5)));
}

} // namespace
} // namespace Terminal
