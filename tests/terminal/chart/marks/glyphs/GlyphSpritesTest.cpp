// The pictures of the marks: what they are must be seen without their colours, in both themes.
#include "terminal/chart/marks/glyphs/GlyphSprites.h"
#include "tests/support/ByName.h"
#include "tests/terminal/support/Contrast.h"

#include <gmock/gmock.h>

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

namespace Terminal {
namespace {

int distance(const QColor &one, const QColor &other)
{
    return std::abs(one.red() - other.red()) + std::abs(one.green() - other.green()) +
           std::abs(one.blue() - other.blue());
}

/// A picture of black and white: true where the glyph shows its colour, whatever that and that of its letters
/// is.
class Ink
{
public:
    Ink(const QImage &picture, const QColor &colour, const ChartTheme &theme)
        : m_width(picture.width()),
          m_height(picture.height())
    {
        for (int y = 0; y < m_height; ++y) {
            for (int x = 0; x < m_width; ++x) {
                const QColor pixel = picture.pixelColor(x, y);
                m_pixels.push_back(distance(pixel, colour) < distance(pixel, theme.background) &&
                                   distance(pixel, colour) < distance(pixel, theme.fillText));
            }
        }
    }

    /// How many pixels differ; all when the pictures are of different sizes.
    int differences(const Ink &other) const
    {
        if (m_width != other.m_width || m_height != other.m_height) {
            return m_width * m_height;
        }
        int count = 0;
        for (size_t i = 0; i < m_pixels.size(); ++i) {
            count += m_pixels[i] == other.m_pixels[i] ? 0 : 1;
        }
        return count;
    }

    int width() const { return m_width; }
    int height() const { return m_height; }
    int inked(int row) const
    {
        const auto from = m_pixels.begin() + row * m_width;
        return static_cast<int>(std::count(from, from + m_width, true));
    }
    /// True when the ink of a row stands in the middle of it.
    bool isCentred(int row) const
    {
        int sum = 0;
        for (int x = 0; x < m_width; ++x) {
            const int pixel = row * m_width + x;
            sum += m_pixels[static_cast<size_t>(pixel)] ? 2 * x + 1 - m_width : 0;
        }
        return std::abs(sum) <= 2 * inked(row);
    }

private:
    int m_width;
    int m_height;
    std::vector<bool> m_pixels;
};

struct Look
{
    const char *name;
    ThemeKind theme;
    RiseColour rise;
};

class GlyphSpritesIn : public ::testing::TestWithParam<Look>
{
protected:
    GlyphSpritesIn() { m_sprites.setLook(m_theme, 1); }

    QImage picture(GlyphNumber number, int count = 1)
    {
        const QPixmap &sprite = m_sprites.sprite(number, count);
        QImage image(sprite.size(), QImage::Format_RGB32);
        image.fill(m_theme.background);
        QPainter(&image).drawPixmap(0, 0, sprite);
        return image;
    }
    Ink order(int kind, EdgeClamp clamp)
    {
        const bool buys = rowOf(orderKinds, kind).side == Direction::Buy;
        return {picture(orderGlyph(kind, clamp)), buys ? m_theme.rise : m_theme.fall, m_theme};
    }
    Ink trade(int style)
    {
        const QColor colours[] = {m_theme.rise, m_theme.fall, m_theme.both};
        return {picture(seriesGlyph(style)), colours[style / 2], m_theme};
    }

    ChartTheme m_theme = makeTheme(GetParam().theme, GetParam().rise);
    GlyphSprites m_sprites;
};

TEST_P(GlyphSpritesIn, TellTheSixKindsOfOrdersApartByShapeAlone)
{
    for (const EdgeClamp clamp : edgeClamps) {
        for (const auto &[one, side, progress] : orderKinds) {
            for (int other = orderKinds.front().number; other < one; ++other) {
                EXPECT_GE(order(one, clamp).differences(order(other, clamp)), 16) << one << " and " << other;
            }
        }
    }
}

TEST_P(GlyphSpritesIn, FillAnOrderAsFarAsItIsDealt)
{
    for (const int waiting : {20, 23}) {
        const auto ink = [this](int kind) {
            const Ink glyph = order(kind, EdgeClamp::None);
            int upper = 0;
            int lower = 0;
            for (int row = 0; row < glyph.height(); ++row) {
                (row < glyph.height() / 2 ? upper : lower) += glyph.inked(row);
            }
            return std::make_pair(upper, lower);
        };
        const auto [hollowUpper, hollowLower] = ink(waiting);
        const auto [halfUpper, halfLower] = ink(waiting + 1);
        const auto [fullUpper, fullLower] = ink(waiting + 2);
        EXPECT_NEAR(halfUpper, hollowUpper, 14) << "but for the letter";
        EXPECT_GT(halfLower, hollowLower + 20);
        EXPECT_GT(fullUpper, halfUpper + 20);
        EXPECT_NEAR(fullLower, halfLower, 24) << "but for the letter";
    }
}

TEST_P(GlyphSpritesIn, WearAnArrowheadTowardsTheEdgeBeyondWhichTheOrderIs)
{
    for (const auto &[kind, side, progress] : orderKinds) {
        const Ink above = order(kind, EdgeClamp::AtTop);
        const Ink below = order(kind, EdgeClamp::AtBottom);
        const Ink inside = order(kind, EdgeClamp::None);
        for (int row = 0; row < 4; ++row) {
            const int mirrored = below.height() - 1 - row;
            EXPECT_NEAR(above.inked(row), 1 + 2.5 * row, 1.6) << kind << " widens from its tip";
            EXPECT_NEAR(below.inked(mirrored), 1 + 2.5 * row, 1.6) << kind;
            EXPECT_TRUE(above.isCentred(row) && below.isCentred(mirrored)) << kind;
        }
        EXPECT_GE(above.differences(inside), 16) << kind;
        EXPECT_GE(below.differences(inside), 16) << kind;
        EXPECT_GE(above.differences(below), 16) << kind;
    }
}

TEST_P(GlyphSpritesIn, TellBuysSellsAndBothApartByShapeAlone)
{
    for (const int side : {0, 1}) {
        EXPECT_GE(trade(side).differences(trade(2 + side)), 16);
        EXPECT_GE(trade(side).differences(trade(4 + side)), 16);
        EXPECT_GE(trade(2 + side).differences(trade(4 + side)), 16);
    }
}

TEST_P(GlyphSpritesIn, PointATradeTowardsItsBar)
{
    for (size_t row = 0; row < seriesStyles.size(); row += 2) {
        const int style = seriesStyles[row].number;
        const Ink above = trade(style);
        const Ink below = trade(style + 1);
        const int last = above.height() - 1;
        EXPECT_LE(above.inked(last - 1), 3) << style;
        EXPECT_TRUE(above.isCentred(last - 1)) << style;
        EXPECT_GE(above.inked(1), 5) << "the head, where it has no letter";
        EXPECT_LE(below.inked(1), 3) << style;
        EXPECT_TRUE(below.isCentred(1)) << style;
        EXPECT_GE(below.inked(last - 1), 5) << style;
    }
}

TEST_P(GlyphSpritesIn, StandOutFromTheBackgroundAndCarryReadableLetters)
{
    for (const QColor &colour : {m_theme.rise, m_theme.fall, m_theme.both}) {
        EXPECT_GE(contrast(colour, m_theme.background), 3) << qPrintable(colour.name());
        EXPECT_GE(contrast(colour, m_theme.fillText), 4.5) << qPrintable(colour.name());
    }
}

TEST_P(GlyphSpritesIn, AllLookDifferent)
{
    std::vector<QImage> pictures;
    for (const SeriesStyle &style : seriesStyles) {
        pictures.push_back(picture(seriesGlyph(style.number)));
    }
    for (const EdgeClamp clamp : edgeClamps) {
        for (const auto &[kind, side, progress] : orderKinds) {
            pictures.push_back(picture(orderGlyph(kind, clamp)));
        }
    }
    for (size_t i = 0; i < pictures.size(); ++i) {
        for (size_t j = 0; j < i; ++j) {
            EXPECT_NE(pictures[i], pictures[j]) << i << " and " << j;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Looks, GlyphSpritesIn,
                         ::testing::Values(Look{"dark", ThemeKind::Dark, RiseColour::Red},
                                           Look{"light", ThemeKind::Light, RiseColour::Red},
                                           Look{"darkGreenRises", ThemeKind::Dark, RiseColour::Green},
                                           Look{"lightGreenRises", ThemeKind::Light, RiseColour::Green}),
                         ByName());

class GlyphSpritesOfManyMarks : public ::testing::TestWithParam<int>
{
};

TEST_P(GlyphSpritesOfManyMarks, AreAsWideAsTheirCount)
{
    for (GlyphNumber number = 0; number < glyphCount; ++number) {
        const double letters = isOrderGlyph(number) ? 9 : 11;
        const double text = QFontMetricsF(glyphFont(static_cast<int>(letters)))
                                .horizontalAdvance(glyphText(QLatin1Char('B'), GetParam()));
        EXPECT_GE(glyph(number).size(GetParam()).width(), text) << number;
        EXPECT_EQ(glyph(number).size(GetParam()).height(), glyph(number).size(1).height()) << number;
    }
}

INSTANTIATE_TEST_SUITE_P(Counts, GlyphSpritesOfManyMarks, ::testing::Values(2, 9, 42, 99, 100, 12345));

} // namespace
} // namespace Terminal
