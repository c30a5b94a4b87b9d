#include "terminal/chart/bars/VisibleBars.h"
#include "tests/terminal/support/SomeBars.h"

#include <gmock/gmock.h>

#include <QImage>

#include <cmath>

namespace Terminal {
namespace {

TEST(VisibleBars, ShowsEachBarThatHasAPixel)
{
    VisibleBars visible;
    visible.update(walkingBars(100), {-0.5, 99.5}, 100);
    EXPECT_EQ(visible.size(), 100U);
    EXPECT_DOUBLE_EQ(visible.sample(99).time, 99);
}

TEST(VisibleBars, LeavesOutWhatIsOutOfView)
{
    VisibleBars visible;
    visible.update(walkingBars(100), {9.5, 19.5}, 1000);
    EXPECT_EQ(visible.size(), 10U);
    EXPECT_DOUBLE_EQ(visible.columns().front().position, 10);
    EXPECT_DOUBLE_EQ(visible.columns().back().position, 19);
}

TEST(VisibleBars, IsEmptyWithoutBars)
{
    VisibleBars visible;
    visible.update({}, {-0.5, 0.5}, 1000);
    EXPECT_EQ(visible.size(), 0U);
}

TEST(VisibleBars, MergesFirstOpenHighestHighLowestLowLastClose)
{
    VisibleBars visible;
    const Bars bars = {
        {20240101, 0, 5, 8, 4, 6, 10}, {20240102, 0, 6, 9, 5, 7, 30}, {20240103, 0, 7, 8, 1, 2, 20}};
    visible.update(bars, {0, 3}, 1);
    ASSERT_EQ(visible.size(), 1U);
    const BarColumn &column = visible.columns().front();
    EXPECT_DOUBLE_EQ(column.open, 5);
    EXPECT_DOUBLE_EQ(column.high, 9);
    EXPECT_DOUBLE_EQ(column.low, 1);
    EXPECT_DOUBLE_EQ(column.close, 2);
    EXPECT_DOUBLE_EQ(column.volume, 30);
}

/// Marks the pixels that vertical lines from high to low would cover, one line per entry.
QImage coverage(const std::vector<BarColumn> &columns, const BarSpan &span, QSize size, double low,
                double high)
{
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(0);
    for (const BarColumn &column : columns) {
        const int x =
            static_cast<int>(std::floor((column.position - span.first) * size.width() / span.width()));
        const auto y = [&](double price) {
            return static_cast<int>((high - price) / (high - low) * (size.height() - 1));
        };
        for (int row = y(column.high); row <= y(column.low) && x >= 0 && x < size.width(); ++row) {
            image.scanLine(row)[x] = 255;
        }
    }
    return image;
}

TEST(VisibleBars, MergedCoverTheSamePixelsAsAllBars)
{
    for (const unsigned seed : {1U, 2U, 3U, 4U, 5U}) {
        const Bars bars = walkingBars(7000, seed);
        for (const BarSpan span : {BarSpan{-0.5, 6999.5}, BarSpan{-0.5, 3777.3}, BarSpan{1234.2, 5001.9}}) {
            const QSize size(701, 300);
            VisibleBars merged;
            merged.update(bars, span, size.width());
            ASSERT_LE(merged.size(), static_cast<size_t>(size.width()) + 2);
            VisibleBars each;
            each.update(bars, span, 1e9); // wide enough that none are merged
            EXPECT_EQ(coverage(merged.columns(), span, size, merged.lowest(), merged.highest()),
                      coverage(each.columns(), span, size, merged.lowest(), merged.highest()))
                << "seed " << seed << ", bars from " << span.first;
            EXPECT_DOUBLE_EQ(merged.highestVolume(), each.highestVolume());
        }
    }
}

} // namespace
} // namespace Terminal
