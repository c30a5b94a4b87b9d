// What overlays draw, pixel for pixel.
#include "terminal/chart/lines/SeriesLabel.h"
#include "terminal/chart/marks/glyphs/GlyphSprites.h"
#include "tests/terminal/support/OverlayWindow.h"

#include <gmock/gmock.h>

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Terminal {
namespace {

class HostPainterTest : public OverlayWindow
{
};

class HostPainterInTheme : public HostPainterTest, public ::testing::WithParamInterface<ThemeKind>
{
};

TEST_P(HostPainterInTheme, DrawsTheCostLineAtItsPrice)
{
    show({QStringLiteral("cost")}, ChartPeriod::Day, GetParam());
    const QImage picture = canvasPicture();
    const int y = static_cast<int>(std::round(geometry().priceToY(costPrice())));
    int found = 0;
    for (const int x : {50, 200, 400, 700}) {
        const std::vector<int> rows = rowsOfColour(picture, x, chart()->theme().line);
        ASSERT_EQ(rows.size(), 1U) << "at x " << x;
        EXPECT_NEAR(rows.front(), y, 1);
        ++found;
    }
    EXPECT_EQ(found, 4);
}

TEST_P(HostPainterInTheme, WritesTheCostInATagAtTheRightEdge)
{
    show({QStringLiteral("cost")}, ChartPeriod::Day, GetParam());
    const QString text = QStringLiteral(u"持仓成本:%1").arg(costPrice(), 0, 'f', 3);
    const QRect box = seriesLabelBox(geometry(), costPrice(), text).toRect();
    EXPECT_NEAR(box.right(), geometry().right, 2);
    EXPECT_NEAR(box.center().y(), geometry().priceToY(costPrice()), 2);

    // The letters inside the tag, rendered once more; the corners show the chart behind them.
    QImage expected = canvasPicture();
    QPainter painter(&expected);
    painter.fillRect(box.adjusted(3, 0, -3, 0), chart()->theme().line);
    painter.setPen(chart()->theme().lineText);
    QFont font;
    font.setPixelSize(12);
    painter.setFont(font);
    painter.drawText(QRectF(box), Qt::AlignCenter | Qt::TextDontClip, text);
    painter.end();
    const QRect inside = box.adjusted(4, 1, -4, -1);
    EXPECT_EQ(canvasPicture().copy(inside), expected.copy(inside));
    EXPECT_GT(rowsOfColour(canvasPicture(), box.left() + 4, chart()->theme().line).size(), 10U);
}

INSTANTIATE_TEST_SUITE_P(Themes, HostPainterInTheme, ::testing::Values(ThemeKind::Dark, ThemeKind::Light));

/// True where every opaque pixel of the sprite is in the picture at `position`.
::testing::AssertionResult shows(const QImage &picture, const QPixmap &sprite, const QPoint &position)
{
    const QImage pixels = sprite.toImage().convertToFormat(QImage::Format_ARGB32);
    int compared = 0;
    for (int y = 0; y < pixels.height(); ++y) {
        for (int x = 0; x < pixels.width(); ++x) {
            const QColor wanted = pixels.pixelColor(x, y);
            if (wanted.alpha() != 255) {
                continue;
            }
            ++compared;
            if (picture.pixelColor(position + QPoint(x, y)) != wanted) {
                return ::testing::AssertionFailure()
                       << "another pixel at " << x << "," << y << " of the glyph";
            }
        }
    }
    return compared > 40 ? ::testing::AssertionSuccess()
                         : ::testing::AssertionFailure() << "hardly any pixels";
}

TEST_F(HostPainterTest, DrawsBuySellAndBothAboveTheirBars)
{
    show({QStringLiteral("trades")});
    const auto last = static_cast<double>(chart()->data().bars.size());
    chart()->setSpan({last - 40, last});
    const QImage picture = canvasPicture();
    GlyphSprites sprites;
    sprites.setLook(chart()->theme(), 1);
    int seen[3] = {0, 0, 0};
    for (int bar = lastMarkedBar() - 27; bar <= lastMarkedBar(); bar += 3) {
        const int kind = bar / 3 % 3;
        const QSizeF size = sprites.size(kind * 2, 1);
        const QPointF anchor = onMark(bar) + QPointF(0, 10);
        // A glyph may stand higher where a neighbour's wick reaches into it.
        bool found = false;
        for (int lift = 0; lift < 300 && !found; ++lift) {
            const QPoint place(static_cast<int>(std::round(anchor.x() - size.width() / 2)),
                               static_cast<int>(std::floor(anchor.y()) - size.height()) - lift);
            found = place.y() >= 0 && shows(picture, sprites.sprite(kind * 2, 1), place);
        }
        EXPECT_TRUE(found) << "bar " << bar << ", kind " << kind;
        seen[kind] += found ? 1 : 0;
    }
    EXPECT_GE(std::min({seen[0], seen[1], seen[2]}), 3);
}

TEST_F(HostPainterTest, DrawsOrdersAtTheirPriceInEveryState)
{
    show({QStringLiteral("orders")}, ChartPeriod::Minute);
    const QImage picture = canvasPicture();
    GlyphSprites sprites;
    sprites.setLook(chart()->theme(), 1);
    const double middle = (geometry().lowPrice + geometry().highPrice) / 2;
    const int centre = static_cast<int>(chart()->data().bars.size()) / 2;
    for (int kind = Korvane::BuyWaiting; kind <= Korvane::SellDealed; ++kind) {
        const QPointF place(geometry().barToX(centre + (kind - 23) * 15) - 8, geometry().priceToY(middle));
        EXPECT_TRUE(shows(picture, sprites.sprite(orderGlyph(kind, EdgeClamp::None), 1), place.toPoint()))
            << kind;
    }
}

TEST_F(HostPainterTest, ShowsWhichEdgeAnOrderIsBeyond)
{
    show({QStringLiteral("orders")}, ChartPeriod::Minute);
    const QImage picture = canvasPicture();
    GlyphSprites sprites;
    sprites.setLook(chart()->theme(), 1);
    const int centre = static_cast<int>(chart()->data().bars.size()) / 2;
    const QPointF low(geometry().barToX(centre + 45) - 8, geometry().bottom - 16);
    const QPointF high(geometry().barToX(centre + 60) - 8, geometry().top);
    EXPECT_TRUE(shows(picture, sprites.sprite(orderGlyph(20, EdgeClamp::AtBottom), 1), low.toPoint()));
    EXPECT_TRUE(shows(picture, sprites.sprite(orderGlyph(23, EdgeClamp::AtTop), 1), high.toPoint()));
}

/// A window whose cost line lies in the middle between the price scale and the lower edge of the canvas.
class HostPainterOfALowCost : public HostPainterTest
{
protected:
    void TearDown() override
    {
        setCostOffset(0);
        HostPainterTest::TearDown();
    }

    void showCost(int height)
    {
        show({QStringLiteral("cost")});
        m_window->resize(m_window->width(), height);
        QApplication::processEvents();
        const double y = (geometry().bottom + chart()->canvas()->height()) / 2;
        setCostOffset(costPrice() - geometry().yToPrice(y));
        load({QStringLiteral("600519"), ChartPeriod::Day});
        QApplication::processEvents();
    }

    /// The row of the border above the volume pane, -1 without one.
    int borderOfVolume(const QImage &picture)
    {
        const std::vector<int> rows = rowsOfColour(picture, 2, chart()->theme().border);
        return rows.empty() ? -1 : rows.front();
    }
};

TEST_F(HostPainterOfALowCost, HasALabelAtTheEdgeAndNoLineInTheVolumePane)
{
    showCost(720);
    const QImage picture = canvasPicture();
    const int edge = static_cast<int>(std::ceil(geometry().bottom));
    const QRect volume(0, edge, picture.width(), picture.height() - edge);
    ASSERT_GT(volume.height(), 50);
    EXPECT_EQ(pixelsOf(picture.copy(volume), chart()->theme().line), 0);
    EXPECT_GT(pixelsOf(picture, chart()->theme().line), 500) << "the label stays";
    EXPECT_EQ(rowsOfColour(picture, 200, chart()->theme().line).size(), 0U);
}

TEST_F(HostPainterOfALowCost, HasItsLabelAboveTheVolumePaneOfAShortChart)
{
    showCost(420);
    ASSERT_LT(chart()->canvas()->height(), 400);
    EXPECT_GT(borderOfVolume(canvasPicture()), geometry().bottom);
}

/// The picture of the cost's label, as it stands at the right edge.
TEST_F(HostPainterTest, HidesTheFiguresOfTheCostLabel)
{
    show({QStringLiteral("cost")});
    const QImage shown = canvasPicture();
    m_window->overlays()->setAmountsHidden(true);
    QApplication::processEvents();
    const QImage hidden = canvasPicture();
    const QRect label = seriesLabelBox(geometry(), costPrice(), QStringLiteral(u"持仓成本:***")).toRect();
    EXPECT_NE(shown.copy(label), hidden.copy(label));
    EXPECT_EQ(hidden.pixelColor(label.left() - 3, label.center().y() - 3), chart()->theme().background)
        << "no longer than its text";
    m_window->overlays()->setAmountsHidden(false);
    QApplication::processEvents();
    EXPECT_EQ(canvasPicture(), shown);
}

} // namespace
} // namespace Terminal
