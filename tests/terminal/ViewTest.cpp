#include "terminal/chart/axes/PriceFit.h"
#include "terminal/chart/axes/TimeTicks.h"
#include "terminal/chart/bars/VisibleBars.h"
#include "terminal/chart/lines/LineDecimator.h"
#include "terminal/chart/text/FigureText.h"
#include "terminal/chart/view/ChartSummary.h"
#include "terminal/data/TradingHours.h"
#include "tests/terminal/SomeBars.h"

#include <gmock/gmock.h>

#include <QImage>
#include <QPainter>

#include <cfloat>
#include <limits>

namespace Terminal {
namespace {

using ::testing::ElementsAre;

constexpr double infinity = std::numeric_limits<double>::infinity();

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

constexpr double paneHeight = 600;

TEST(PriceFit, HoldsTheCandlesWithSomeAir)
{
    const PriceSpan fit = fitPrices({10, 20}, {}, paneHeight);
    EXPECT_LT(fit.low, 10);
    EXPECT_GT(fit.high, 20);
    EXPECT_LT(fit.high - fit.low, 13);
}

TEST(PriceFit, LeavesTheCandlesMostOfATinyPane)
{
    const PriceSpan fit = fitPrices({10, 20}, {}, 10);
    EXPECT_NEAR(fit.high - fit.low, 20, 1e-9);
}

TEST(PriceFit, OpensAFlatScale)
{
    const PriceSpan fit = fitPrices({10, 10}, {}, paneHeight);
    EXPECT_LT(fit.low, 10);
    EXPECT_GT(fit.high, 10);
}

TEST(PriceFit, GrantsAWishThatIsNear)
{
    const PriceSpan fit = fitPrices({10, 20}, {{9, 21}}, paneHeight);
    EXPECT_LT(fit.low, 9);
    EXPECT_GT(fit.high, 21);
}

TEST(PriceFit, GrantsTheNearBoundOfAWideWish)
{
    const PriceSpan fit = fitPrices({10, 20}, {{8, 500}}, paneHeight);
    EXPECT_LT(fit.low, 8);
    EXPECT_LT(fit.high, 25);
}

class NoWish : public ::testing::TestWithParam<PriceSpan>
{
};

TEST_P(NoWish, LeavesTheScaleAlone)
{
    const PriceSpan plain = fitPrices({10, 20}, {}, paneHeight);
    const PriceSpan fit = fitPrices({10, 20}, {GetParam()}, paneHeight);
    EXPECT_DOUBLE_EQ(fit.low, plain.low);
    EXPECT_DOUBLE_EQ(fit.high, plain.high);
}

INSTANTIATE_TEST_SUITE_P(Spans, NoWish,
                         ::testing::Values(PriceSpan{DBL_MAX, DBL_MIN}, PriceSpan{15, 14},
                                           PriceSpan{-infinity, infinity}, PriceSpan{std::nan(""), 15},
                                           PriceSpan{15, std::nan("")}, PriceSpan{500, 500}, PriceSpan{1, 1},
                                           PriceSpan{12, 18}));

std::vector<std::string> labels(const std::vector<TimeTick> &ticks)
{
    std::vector<std::string> texts;
    for (const TimeTick &tick : ticks) {
        texts.push_back(tick.label.toStdString());
    }
    return texts;
}

Bars weekdays(const QDate &first, int count)
{
    Bars bars;
    for (QDate date = first; static_cast<int>(bars.size()) < count; date = date.addDays(1)) {
        if (date.dayOfWeek() <= 5) {
            bars.push_back({packedDate(date), 0, 1, 1, 1, 1, 1});
        }
    }
    return bars;
}

Bars fullDay()
{
    Bars bars;
    for (int minute = 0; minute < 24 * 60; ++minute) {
        if (isTradingMinute(minute)) {
            bars.push_back({20240102, minute, 1, 1, 1, 1, 1});
        }
    }
    return bars;
}

TEST(TimeTicks, NamesTheMonthsOfHalfAYear)
{
    const Bars bars = weekdays(QDate(2023, 9, 15), 120);
    EXPECT_THAT(labels(timeTicks(bars, {-0.5, 119.5}, 15)),
                ElementsAre("2023-10", "2023-11", "2023-12", "2024", "2024-02"));
}

TEST(TimeTicks, PutsAMonthUnderItsFirstTradingDay)
{
    const Bars bars = weekdays(QDate(2023, 9, 15), 120);
    for (const TimeTick &tick : timeTicks(bars, {-0.5, 119.5}, 15)) {
        EXPECT_NE(bars[tick.bar].date / 100, bars[tick.bar - 1].date / 100) << bars[tick.bar].date;
    }
}

TEST(TimeTicks, NamesTheHalfHoursOfADayWithoutTheLunchBreak)
{
    EXPECT_THAT(
        labels(timeTicks(fullDay(), {-0.5, 240.5}, 18)),
        ElementsAre("09:30", "10:00", "10:30", "11:00", "11:30/13:00", "13:30", "14:00", "14:30", "15:00"));
}

TEST(TimeTicks, KeepTheirDistance)
{
    const Bars bars = weekdays(QDate(1991, 4, 3), 8000);
    for (const double width : {12.0, 60.0, 250.0, 1000.0, 7999.0}) {
        const std::vector<TimeTick> ticks = timeTicks(bars, {8000 - width, 7999.5}, width / 12);
        for (size_t i = 1; i < ticks.size(); ++i) {
            EXPECT_GE(static_cast<double>(ticks[i].bar - ticks[i - 1].bar), width / 12 * 0.8);
        }
        EXPECT_GE(ticks.size(), 2U) << width;
    }
}

TEST(TimeTicks, AreNoneWithoutBars)
{
    EXPECT_TRUE(timeTicks({}, {-0.5, 10}, 5).empty());
}

TEST(NumberText, ShortensVolumesInTheReadersUnits)
{
    EXPECT_EQ(volumeText(358.18e4, QLocale::Chinese), QStringLiteral(u"358.18万"));
    EXPECT_EQ(volumeText(1.2e8, QLocale::Chinese), QStringLiteral(u"1.20亿"));
    EXPECT_EQ(volumeText(999, QLocale::Chinese), QStringLiteral("999"));
    EXPECT_EQ(volumeText(2.5e6, QLocale::English), QStringLiteral("2.50M"));
    EXPECT_EQ(changeText(0.0123), QStringLiteral("+1.23%"));
    EXPECT_EQ(changeText(-0.0123), QStringLiteral("-1.23%"));
}

QImage drawn(const std::vector<QPointF> &points, bool decimated)
{
    QImage image(300, 200, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    if (decimated) {
        LineDecimator line(&painter);
        for (const QPointF &point : points) {
            line.add(point.x(), point.y());
        }
        line.finish();
    } else {
        painter.drawPolyline(points.data(), static_cast<int>(points.size()));
    }
    return image;
}

TEST(LineDecimator, DrawsAHorizontalLineWithTwoPointsAndTheSamePixels)
{
    std::vector<QPointF> points;
    for (int i = 0; i < 3000; ++i) {
        points.emplace_back(i / 10.0, 77.0);
    }
    EXPECT_EQ(drawn(points, true), drawn(points, false));
}

TEST(LineDecimator, PartsTheLineWhereThereIsNoPoint)
{
    const QImage image = drawn({{10, 50}, {100, 50}, {150, std::nan("")}, {200, 50}, {290, 50}}, true);
    EXPECT_EQ(image.pixel(50, 50), QColor(Qt::black).rgb());
    EXPECT_EQ(image.pixel(150, 50), QColor(Qt::white).rgb());
    EXPECT_EQ(image.pixel(250, 50), QColor(Qt::black).rgb());
}

TEST(LineDecimator, KeepsTheExtremesOfAPixelColumn)
{
    const QImage image =
        drawn({{10, 100}, {20.1, 100}, {20.2, 20}, {20.3, 180}, {20.4, 100}, {30, 100}}, true);
    EXPECT_EQ(image.pixel(20, 25), QColor(Qt::black).rgb());
    EXPECT_EQ(image.pixel(20, 175), QColor(Qt::black).rgb());
}

TEST(Change, OfADayIsAgainstTheDayBefore)
{
    ChartData days = dailyChart(3);
    days.bars[1].close = 100;
    days.bars[2].close = 101;
    days.previousClose = 50;
    EXPECT_DOUBLE_EQ(changeAt(2, days), 0.01);
    days.bars[0].open = 100;
    days.bars[0].close = 98;
    EXPECT_DOUBLE_EQ(changeAt(0, days), -0.02);
}

TEST(Change, OfAMinuteIsAgainstTheTradingDayBefore)
{
    ChartData minutes = dailyChart(3);
    minutes.period = ChartPeriod::Minute;
    minutes.previousClose = 200;
    minutes.bars[0].open = 100;
    minutes.bars[1].close = 1;
    minutes.bars[2].close = 210;
    EXPECT_DOUBLE_EQ(changeAt(2, minutes), 0.05);
    minutes.previousClose.reset();
    EXPECT_DOUBLE_EQ(changeAt(2, minutes), 1.1);
}

} // namespace
} // namespace Terminal
