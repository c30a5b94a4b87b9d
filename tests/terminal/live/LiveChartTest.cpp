// A chart that grows with a day that is replayed, or under way.
#include "terminal/live/LiveChart.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/live/ChartSource.h"
#include "terminal/live/Today.h"
#include "terminal/replay/Replay.h"
#include "tests/support/TurnWatch.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/OverlayWindow.h"
#include "tests/terminal/support/ReplayWindow.h"
#include "tests/terminal/support/SomeQuotes.h"

#include <gmock/gmock.h>

#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QTemporaryDir>

namespace Terminal {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class LiveChartOfAReplay : public ReplayWindow
{
};

TEST_F(LiveChartOfAReplay, GrowsWithoutMakingOverlaysAnew)
{
    m_window->setReplaying(true);
    QApplication::processEvents();
    overlayLog();
    replay()->step();
    replay()->playTo(atTime(1000));
    const std::string log = overlayLog();
    EXPECT_THAT(log, HasSubstr("calc 000001 2 21"));
    EXPECT_THAT(log, HasSubstr("calc 000001 31 21"));
    EXPECT_EQ(countOf(log, "calc"), 2) << log;
    EXPECT_THAT(log, Not(HasSubstr("ended")));
}

TEST_F(LiveChartOfAReplay, HasRoomForTheWholeDayFromTheFirstBarOn)
{
    m_window->setReplaying(true);
    const BarSpan atOpening = chart()->span();
    EXPECT_GE(atOpening.last, 240.5);
    replay()->playTo(atTime(1500));
    EXPECT_DOUBLE_EQ(chart()->span().last, atOpening.last);
    EXPECT_TRUE(chart()->data().ahead.empty());
}

TEST_F(LiveChartOfAReplay, LeavesTheViewOfOlderBarsAlone)
{
    m_window->setReplaying(true);
    replay()->playTo(atTime(1000));
    chart()->setSpan({0, 20});
    replay()->step();
    EXPECT_DOUBLE_EQ(chart()->span().first, 0);
    EXPECT_DOUBLE_EQ(chart()->span().last, 20);
}

TEST_F(LiveChartOfAReplay, MovesTheViewAlongWithTheLastBar)
{
    m_window->setReplaying(true);
    replay()->playTo(atTime(1000));
    chart()->setSpan({10.5, 30.5});
    replay()->step();
    EXPECT_DOUBLE_EQ(chart()->span().first, 11.5);
    EXPECT_DOUBLE_EQ(chart()->span().last, 31.5);
}

TEST_F(LiveChartOfAReplay, NeverShowsTheAfternoonAloneBeforeItCame)
{
    m_window->setReplaying(true);
    replay()->playTo(atTime(1000));
    chart()->setSpan({200, 230});
    EXPECT_LE(chart()->span().first, 25.5);
    replay()->playTo(atTime(1430));
    const double last = static_cast<double>(shownBars()) - 1;
    EXPECT_LT(chart()->span().first, last);
    EXPECT_GT(chart()->span().last, last) << "the view has followed";
}

TEST_F(LiveChartOfAReplay, EndsAtTheLastMinuteThatCame)
{
    m_window->setReplaying(true);
    replay()->playTo(atTime(1000));
    chart()->setSpan({0, 20});
    focusChart();
    QTest::keyClick(chart(), Qt::Key_End);
    EXPECT_NEAR(chart()->span().last, static_cast<double>(shownBars()) - 0.5, 2);
}

TEST_F(LiveChartOfAReplay, HasTheTimesOfTheMinutesToCome)
{
    m_window->setReplaying(true);
    replay()->playTo(atTime(1000));
    EXPECT_TRUE(chart()->timeAt(geometry().barToX(60)).endsWith(QLatin1String("10:30")))
        << qPrintable(chart()->timeAt(geometry().barToX(60)));
    EXPECT_EQ(chart()->barUnder(geometry().barToX(60)), std::nullopt);
}

TEST_F(LiveChartOfAReplay, BeginsTheDayAgain)
{
    m_window->setReplaying(true);
    replay()->playTo(atTime(1000));
    replay()->restart();
    EXPECT_EQ(shownBars(), 1U);
    EXPECT_EQ(chart()->data().ahead.size(), 240U);
}

/// The window while the market is open: quotes as they come from the bus.
class LiveChartOfTheMarket : public OverlayWindow
{
protected:
    void show(ChartPeriod period)
    {
        OverlayWindow::show({QStringLiteral("cost"), QStringLiteral("trades"), QStringLiteral("orders")},
                            period);
        overlayLog();
    }

    void quote(int hhmm, double price, qint64 volume = 100)
    {
        Trading::Quote quote = quoteAt(hhmm, price, volume);
        quote.date = m_day;
        m_session->today()->take(quote);
    }

    const Bars &bars() { return chart()->data().bars; }
    bool closesAt(double price)
    {
        return waitUntil([this, price] { return bars().back().close == price; });
    }

    const Trading::TradingDate m_day = Trading::TradingDate::today();
};

TEST_F(LiveChartOfTheMarket, GoesOnWithTodayWhenItsFirstQuoteComes)
{
    show(ChartPeriod::Minute);
    quote(930, 1500);
    ASSERT_TRUE(closesAt(1500));
    EXPECT_EQ(bars().size(), 1U);
    EXPECT_EQ(bars().back().date, m_day.number());
    EXPECT_EQ(chart()->data().ahead.size(), 240U);
    quote(931, 1501);
    ASSERT_TRUE(closesAt(1501));
    EXPECT_EQ(bars().size(), 2U);
}

TEST_F(LiveChartOfTheMarket, StaysOnADayThatWasChosen)
{
    show(ChartPeriod::Minute);
    load({QStringLiteral("600519"), ChartPeriod::Minute, onDay(20260327)});
    quote(930, 1500);
    EXPECT_FALSE(waitUntil([this] { return bars().back().close == 1500; }, std::chrono::milliseconds(60)));
    EXPECT_EQ(bars().size(), 241U);
}

TEST_F(LiveChartOfTheMarket, EndsDaysWeeksAndMonthsWithToday)
{
    show(ChartPeriod::Day);
    for (const ChartPeriod period : {ChartPeriod::Day, ChartPeriod::Week, ChartPeriod::Month}) {
        load({QStringLiteral("600519"), period});
        const double price = 1500 + static_cast<int>(period);
        quote(931 + static_cast<int>(period), price);
        ASSERT_TRUE(closesAt(price));
        EXPECT_EQ(bars().back().date, m_day.number());
        const size_t count = bars().size();
        quote(931 + static_cast<int>(period), price + 0.5, 200);
        ASSERT_TRUE(closesAt(price + 0.5));
        EXPECT_EQ(bars().size(), count) << "today is one bar";
    }
}

TEST_F(LiveChartOfTheMarket, MakesOverlaysAnewForANewDayAndCalculatesThemForTheRest)
{
    show(ChartPeriod::Day);
    quote(931, 1500);
    ASSERT_TRUE(closesAt(1500));
    EXPECT_THAT(overlayLog(), HasSubstr("ended"));
    quote(931, 1600, 200);
    ASSERT_TRUE(closesAt(1600));
    const std::string log = overlayLog();
    EXPECT_THAT(log, Not(HasSubstr("ended")));
    EXPECT_THAT(log, HasSubstr("calc 600519 2891 4"));
}

TEST_F(LiveChartOfTheMarket, PutsQuotesThatComeTogetherIntoOneRepaint)
{
    show(ChartPeriod::Minute);
    quote(930, 1500);
    ASSERT_TRUE(closesAt(1500));
    overlayLog();
    for (int minute = 31; minute < 51; ++minute) {
        quote(900 + minute, 1500 + minute);
    }
    ASSERT_TRUE(closesAt(1550));
    EXPECT_EQ(bars().size(), 21U);
    EXPECT_EQ(countOf(overlayLog(), "calc 600519 21 21"), 3) << "each overlay once";
}

TEST_F(LiveChartOfTheMarket, LeavesChartsOfOtherSecuritiesAlone)
{
    show(ChartPeriod::Minute);
    load({QStringLiteral("000001"), ChartPeriod::Minute});
    const Bars before = bars();
    overlayLog();
    quote(930, 1500);
    QApplication::processEvents();
    EXPECT_EQ(bars(), before);
    EXPECT_EQ(overlayLog(), "");
}

TEST_F(LiveChartOfTheMarket, ShowsALateQuoteInItsMinute)
{
    show(ChartPeriod::Minute);
    quote(930, 1500);
    quote(932, 1502);
    ASSERT_TRUE(closesAt(1502));
    quote(931, 1511);
    ASSERT_TRUE(waitUntil([this] { return bars().size() == 3; }));
    EXPECT_EQ(bars()[1].close, 1511);
    EXPECT_EQ(bars().back().close, 1502);
}

TEST_F(LiveChartOfTheMarket, SaysHowTheMarketStands)
{
    show(ChartPeriod::Day);
    speakEnglish();
    const auto said = [this] { return m_window->findChild<QLabel *>(QStringLiteral("state-market")); };
    EXPECT_TRUE(said()->isHidden());
    quote(1031, 1500);
    EXPECT_EQ(said()->text(), QStringLiteral("Market: 10:31"));
    quote(1140, 1500);
    EXPECT_EQ(said()->text(), QStringLiteral("Market: lunch break"));
}

TEST_F(LiveChartOfTheMarket, DrawsAQuoteSoonAlsoAmongAHundredThousandBars)
{
    show(ChartPeriod::Day);
    ChartData many = chart()->data();
    many.bars.clear();
    QDate date(1750, 1, 1);
    for (int number = 0; number < 100'000; ++number, date = date.addDays(1)) {
        many.bars.push_back({Trading::TradingDate::ofCalendar(date)->number(), 0, 10, 11, 9, 10, 100});
    }
    chart()->setData(many);
    chart()->showAll();
    quote(931, 1500);
    ASSERT_TRUE(closesAt(1500));
    QApplication::processEvents();
    const double before = TurnWatch::threadTime();
    quote(931, 1501, 200);
    ASSERT_TRUE(closesAt(1501));
    QApplication::processEvents();
    EXPECT_LT(TurnWatch::threadTime() - before, 300) << "milliseconds of work; 5 as released";
}

/// With a data folder of its own, whose files grow.
class LiveChartOfAGrowingFolder : public WindowFixture
{
protected:
    LiveChartOfAGrowingFolder()
    {
        write("securities.csv", "code,market,name\n600519,SH,A\n");
        write("daily/600519.csv", "date,open,high,low,close,volume\n20240102,10,11,9,10,1000\n");
    }

    void write(const char *name, const QByteArray &content)
    {
        const QString path = m_folder.filePath(QLatin1String(name));
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir m_folder;
};

TEST_F(LiveChartOfAGrowingFolder, ShowsDaysThatAreAddedToTheFile)
{
    openWindow({QStringLiteral("600519")}, {}, m_folder.path());
    EXPECT_EQ(chart()->data().bars.size(), 1U);
    write("daily/600519.csv",
          "date,open,high,low,close,volume\n20240102,10,11,9,10,1000\n20240103,10,12,9,11,900\n");
    ASSERT_TRUE(waitUntil([this] { return chart()->data().bars.size() == 2; }));
    EXPECT_EQ(chart()->data().bars.back().close, 11);
}

TEST_F(LiveChartOfAGrowingFolder, FillsAGapFromTheMinutesThatAreAddedToTheFile)
{
    const Trading::TradingDate day = Trading::TradingDate::today();
    const std::string file = "minute/600519_" + day.digits() + ".csv";
    const QByteArray begin("time,open,high,low,close,volume\n0930,10,10,10,10,100\n0931,10,11,10,11,200\n");
    write(file.c_str(), begin);
    openWindow({QStringLiteral("600519"), ChartPeriod::Minute}, {}, m_folder.path());
    EXPECT_EQ(chart()->data().bars.size(), 2U);
    Trading::Quote later = quoteAt(934, 13, 400);
    later.date = day;
    m_session->today()->take(later);
    ASSERT_TRUE(waitUntil([this] { return chart()->data().bars.size() == 3; }));
    write(file.c_str(), begin + "0932,11,12,11,12,300\n0933,12,12.5,12,12.5,350\n");
    ASSERT_TRUE(waitUntil([this] { return chart()->data().bars.size() == 5; }));
    EXPECT_EQ(chart()->data().bars[3].close, 12.5);
    EXPECT_EQ(chart()->data().bars.back().close, 13) << "the quote's own minute stays";
}

/// A chart that is left open over midnight: the clock is the test's.
class LiveChartOverMidnight : public ::testing::Test
{
protected:
    LiveChartOverMidnight()
    {
        write("securities.csv", "code,market,name\n600519,SH,A\n");
        write("daily/600519.csv", "date,open,high,low,close,volume\n"
                                  "20240102,8,9,7,8,1000\n20240103,8,9,7,9,900\n20240104,9,10,6,9.5,800\n");
    }

    void write(const char *name, const QByteArray &content)
    {
        const QString path = m_folder.filePath(QLatin1String(name));
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    void open(ChartPeriod period)
    {
        m_source.emplace(DataFolder::open(m_folder.path()).value(), &m_today);
        m_live.emplace(&m_chart, &*m_source, &m_today, &m_replay);
        m_chart.setData(m_source->load(quotedSecurity.code, period).value());
    }

    void quote(int hhmm, double price, qint64 volume)
    {
        Trading::Quote quote = quoteAt(hhmm, price, volume);
        quote.date = m_day;
        m_today.take(quote);
    }

    const Bars &bars() { return m_chart.data().bars; }
    bool closesAt(double price)
    {
        return waitUntil([this, price] { return bars().back().close == price; });
    }

    QTemporaryDir m_folder;
    Trading::TradingDate m_day = quotedDay; // a Thursday
    Replay m_replay{nullptr};
    Today m_today{&m_replay, [this] { return m_day; }};
    ChartView m_chart;
    std::optional<ChartSource> m_source;
    std::optional<LiveChart> m_live;
};

TEST_F(LiveChartOverMidnight, MixesNothingOfYesterdaysRowIntoToday)
{
    open(ChartPeriod::Day);
    quote(1500, 9.6, 900);
    ASSERT_TRUE(closesAt(9.6));
    m_day = m_day.plusDays(1);

    quote(931, 12, 50);

    ASSERT_TRUE(closesAt(12));
    EXPECT_EQ(bars().size(), 4U);
    EXPECT_EQ(bars().back(), (Bar{20240105, 0, 12, 12, 12, 12, 50}));
    EXPECT_EQ(bars()[2].date, 20240104);
}

TEST_F(LiveChartOverMidnight, KeepsTheDayThatOnlyQuotesTold)
{
    write("daily/600519.csv",
          "date,open,high,low,close,volume\n20240102,8,9,7,8,1000\n20240103,8,9,7,9,900\n");
    open(ChartPeriod::Day);
    quote(1500, 9.6, 900);
    ASSERT_TRUE(closesAt(9.6));
    m_day = m_day.plusDays(1);

    quote(931, 12, 50);

    ASSERT_TRUE(closesAt(12));
    ASSERT_EQ(bars().size(), 4U);
    EXPECT_EQ(bars()[2], (Bar{20240104, 0, 9.6, 9.6, 9.6, 9.6, 900}));
}

TEST_F(LiveChartOverMidnight, GoesOnWithTheWeek)
{
    open(ChartPeriod::Week);
    quote(1500, 9.6, 900);
    ASSERT_TRUE(closesAt(9.6));
    m_day = m_day.plusDays(1);

    quote(931, 12, 50);

    ASSERT_TRUE(closesAt(12));
    ASSERT_EQ(bars().size(), 1U);
    EXPECT_EQ(bars().back(), (Bar{20240105, 0, 8, 12, 6, 12, 2750})) << "Thursday as its row has it: 800";
}

TEST_F(LiveChartOverMidnight, GoesOnWithAWeekOfWhichOnlyQuotesToldADay)
{
    write("daily/600519.csv",
          "date,open,high,low,close,volume\n20240102,8,9,7,8,1000\n20240103,8,9,7,9,900\n");
    open(ChartPeriod::Week);
    quote(1500, 9.6, 800);
    ASSERT_TRUE(closesAt(9.6));
    m_day = m_day.plusDays(1);

    quote(931, 12, 50);

    ASSERT_TRUE(closesAt(12));
    EXPECT_EQ(bars().back(), (Bar{20240105, 0, 8, 12, 7, 12, 2750}));
}

TEST_F(LiveChartOverMidnight, ShowsTheDayBeforeUntilTheFirstQuoteOfTheNewOne)
{
    open(ChartPeriod::Day);
    quote(1500, 9.6, 900);
    ASSERT_TRUE(closesAt(9.6));
    m_day = m_day.plusDays(1);
    EXPECT_EQ(m_source->barOfToday(m_chart.data()), std::nullopt);
    EXPECT_EQ(bars().size(), 3U);
}

} // namespace
} // namespace Terminal
