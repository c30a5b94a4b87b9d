// When overlays are calculated, and with what.
#include "terminal/plugin/OverlayUpdates.h"
#include "tests/terminal/support/OverlayChart.h"
#include "tests/terminal/support/OverlayWindow.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using ::testing::HasSubstr;

class OverlayUpdatesOnAChart : public OverlayChart
{
protected:
    /// Starts to calculate with gates that the test opens.
    void start(std::chrono::milliseconds heartbeat)
    {
        const auto collect = [](Proceeds *waiting) {
            return [waiting](QObject *, std::function<void()> proceed) {
                waiting->push_back(std::move(proceed));
            };
        };
        m_updates = std::make_unique<OverlayUpdates>(
            &m_chart, &m_overlays, BusGates{collect(&m_joining), collect(&m_asking)}, heartbeat);
        m_updates->takeLoadedBars();
    }

    using Proceeds = std::vector<std::function<void()>>;
    static void open(Proceeds *waiting)
    {
        for (const auto &proceed : std::exchange(*waiting, {})) {
            proceed();
        }
    }

    /// An overlay that has joined the bus; the log is empty then.
    void show(const char *word)
    {
        ASSERT_TRUE(m_overlays.show(kind(word)));
        open(&m_joining);
        overlayLog();
    }

    void growWithChart()
    {
        QObject::connect(&m_chart, &ChartView::barsGrew, m_updates.get(),
                         [this](int first) { m_updates->calcGrown(m_updates->takeBarsFrom(first)); });
    }

    static constexpr std::chrono::milliseconds never = std::chrono::hours(1);

    Proceeds m_joining;
    Proceeds m_asking;
    std::unique_ptr<OverlayUpdates> m_updates;
};

TEST_F(OverlayUpdatesOnAChart, CalculateNoneBeforeItHasJoinedTheBus)
{
    start(never);
    m_overlays.show(kind("cost"));
    m_updates->calcAll();
    EXPECT_EQ(countOf(overlayLog(), "calc"), 0);
    open(&m_joining);
    EXPECT_EQ(countOf(overlayLog(), "calc 600519 300"), 1);
}

TEST_F(OverlayUpdatesOnAChart, CalculateAgainAndAgainWithoutAnyBar)
{
    start(std::chrono::milliseconds(5));
    show("trades");
    std::string log;
    EXPECT_TRUE(waitUntil([&log] { return countOf(log += overlayLog(), "calc 600519 300") >= 3; }));
}

TEST_F(OverlayUpdatesOnAChart, CalculateOnceForAnOverlayThatAsksTwice)
{
    start(never);
    show("trades");
    Korvane::IChartObject *const object = m_overlays.all().front().handle->object();
    m_updates->queue(object);
    m_updates->queue(object);
    m_updates->run();
    EXPECT_EQ(countOf(overlayLog(), "calc"), 1);
    m_updates->run();
    EXPECT_EQ(countOf(overlayLog(), "calc"), 0);
}

TEST_F(OverlayUpdatesOnAChart, TellWhichKindAsks)
{
    start(never);
    show("trades");
    show("cost");
    std::vector<const OverlayKind *> asked;
    QObject::connect(m_updates.get(), &OverlayUpdates::updateAsked, m_updates.get(),
                     [&asked](const OverlayKind *kind) { asked.push_back(kind); });
    m_updates->queue(m_overlays.find(kind("trades"))->handle->object());
    EXPECT_THAT(asked, ::testing::ElementsAre(&kind("trades")));
}

TEST_F(OverlayUpdatesOnAChart, AskOnceBeforeACombinedOverlayHoweverOftenItIsToBeCalculated)
{
    start(never);
    show("combined-cost");
    m_updates->calcAll();
    m_updates->calcCombined();
    EXPECT_EQ(m_asking.size(), 1U);
    EXPECT_EQ(countOf(overlayLog(), "calc"), 0);
    open(&m_asking);
    EXPECT_EQ(countOf(overlayLog(), "calc"), 1);
    m_updates->calcCombined();
    EXPECT_EQ(m_asking.size(), 1U);
}

TEST_F(OverlayUpdatesOnAChart, LeaveAnOverlayAloneThatWasTakenAwayWhileItWaited)
{
    start(never);
    m_overlays.show(kind("cost"));
    show("combined-cost");
    m_overlays.hide(kind("cost"));
    m_overlays.hide(kind("combined-cost"));
    overlayLog();
    open(&m_joining);
    open(&m_asking);
    EXPECT_EQ(overlayLog(), "");
}

TEST_F(OverlayUpdatesOnAChart, HandOverTheBarsThatWereAdded)
{
    start(never);
    show("trades");
    growWithChart();
    m_chart.grow(300, Bars(2, m_chart.data().bars.back()));
    EXPECT_THAT(overlayLog(), HasSubstr("calc 600519 302"));
}

TEST_F(OverlayUpdatesOnAChart, CalculateOnceMoreWhenTheLastBarBecameAnother)
{
    start(never);
    show("trades");
    growWithChart();
    overlayLog();
    Bar last = m_chart.data().bars.back();
    last.high += 1;
    m_chart.grow(299, {last});
    EXPECT_THAT(overlayLog(), HasSubstr("calc 600519 300"));
    last.volume += 100;
    m_chart.grow(299, {last});
    EXPECT_EQ(overlayLog(), "") << "overlays know no volumes";
}

TEST_F(OverlayUpdatesOnAChart, SpareACombinedOverlayUntilThereIsAnotherBar)
{
    start(never);
    show("combined-cost");
    open(&m_asking);
    growWithChart();
    overlayLog();
    Bar last = m_chart.data().bars.back();
    last.high += 1;
    m_chart.grow(299, {last});
    open(&m_asking);
    EXPECT_EQ(overlayLog(), "");
    m_chart.grow(300, {last});
    open(&m_asking);
    EXPECT_THAT(overlayLog(), HasSubstr("calc 600519 301"));
}

class OverlayUpdatesOnAWindow : public OverlayWindow
{
};

TEST_F(OverlayUpdatesOnAWindow, HandsOverTheWholeLoadedRangeAndNotWhatIsInView)
{
    show({QStringLiteral("cost")});
    EXPECT_THAT(overlayLog(), HasSubstr("calc 600519 2890 4"));
    chart()->setSpan({100, 200});
    QApplication::processEvents();
    EXPECT_EQ(overlayLog(), "");
}

TEST_F(OverlayUpdatesOnAWindow, AnswersARequestForARepaintWithOneCalculation)
{
    show({QStringLiteral("cost")});
    QApplication::processEvents();
    EXPECT_EQ(countOf(overlayLog(), "calc"), 2); // when it was made, and for its own request
}

TEST_F(OverlayUpdatesOnAWindow, CalculatesCombinedOverlaysOnlyWhenATradingModuleAnswers)
{
    m_moduleAnswers = false;
    show({QStringLiteral("cost"), QStringLiteral("combined-cost")});
    EXPECT_EQ(countOf(overlayLog(), "calc"), 2) << "those of the cost line alone";
    EXPECT_EQ(m_askedForAnswers, 1);
    m_window->overlays()->showHeard(QStringLiteral("600519"));
    EXPECT_EQ(m_askedForAnswers, 1) << "still waiting";

    m_moduleAnswers = true;
    m_window->overlays()->setShown(*findOverlayKind(QStringLiteral("combined-trades")), true);
    EXPECT_EQ(countOf(overlayLog(), "calc 600519"), 1);
}

TEST_F(OverlayUpdatesOnAWindow, ShowsWhatCombinedOverlaysOfItsSecurityHaveHeard)
{
    show({QStringLiteral("combined-cost"), QStringLiteral("combined-trades")});
    overlayLog();
    m_window->overlays()->showHeard(QStringLiteral("000001"));
    EXPECT_EQ(overlayLog(), "");
    m_window->overlays()->showHeard(QStringLiteral("600519"));
    EXPECT_EQ(countOf(overlayLog(), "calc 600519"), 2);
}

} // namespace
} // namespace Terminal
