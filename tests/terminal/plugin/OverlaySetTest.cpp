// How overlays begin and end.
#include "tests/terminal/support/OverlayChart.h"
#include "tests/terminal/support/OverlayWindow.h"

#include <gmock/gmock.h>

#include <QMenu>

namespace Terminal {
namespace {

using ::testing::HasSubstr;

class OverlaySetOnAChart : public OverlayChart
{
protected:
    /// Makes every overlay anew.
    void renewAll()
    {
        m_overlays.renew([](const OverlayKind &) { return true; });
    }
};

TEST_F(OverlaySetOnAChart, HasOneOfAKind)
{
    EXPECT_TRUE(m_overlays.show(kind("cost")));
    EXPECT_TRUE(m_overlays.show(kind("cost")));
    EXPECT_EQ(m_overlays.all().size(), 1U);
    EXPECT_EQ(countOf(overlayLog(), "made"), 1);
}

TEST_F(OverlaySetOnAChart, ShowsNoneThatTheLibraryDoesNotMake)
{
    setLibraryMakesOverlays(false);
    EXPECT_FALSE(m_overlays.show(kind("cost")));
    EXPECT_EQ(m_overlays.find(kind("cost")), nullptr);
}

TEST_F(OverlaySetOnAChart, TellsOfEachThatItMakes)
{
    std::vector<const OverlayKind *> made;
    QObject::connect(&m_overlays, &OverlaySet::made, &m_overlays,
                     [&made](const ShownOverlay &overlay) { made.push_back(overlay.kind); });
    m_overlays.show(kind("trades"));
    m_overlays.show(kind("cost"));
    renewAll();
    EXPECT_THAT(made, ::testing::ElementsAre(&kind("trades"), &kind("cost"), &kind("trades"), &kind("cost")));
}

TEST_F(OverlaySetOnAChart, KeepsTheOrderOfPaintingWhenOneIsMadeAnew)
{
    m_overlays.show(kind("trades"));
    m_overlays.show(kind("cost"));
    m_overlays.renew([](const OverlayKind &kind) { return kind.boundToRange; });
    EXPECT_EQ(m_overlays.all().front().kind, &kind("trades"));
    EXPECT_EQ(m_overlays.all().back().kind, &kind("cost"));
}

TEST_F(OverlaySetOnAChart, LosesOneThatTheLibraryDoesNotMakeAgainAndTellsSo)
{
    m_overlays.show(kind("trades"));
    m_overlays.show(kind("cost"));
    std::vector<const OverlayKind *> lost;
    QObject::connect(&m_overlays, &OverlaySet::lost, &m_overlays,
                     [&lost](const OverlayKind &kind) { lost.push_back(&kind); });
    setLibraryMakesOverlays(false);
    m_overlays.renew([](const OverlayKind &kind) { return kind.boundToRange; });
    EXPECT_THAT(lost, ::testing::ElementsAre(&kind("trades")));
    EXPECT_EQ(m_overlays.find(kind("trades")), nullptr);
    EXPECT_NE(m_overlays.find(kind("cost")), nullptr);
}

TEST_F(OverlaySetOnAChart, EndsAllWithItself)
{
    auto set = std::make_unique<OverlaySet>(&m_chart, &m_axis,
                                            OverlayLibrary::open(QStringLiteral(TEST_OVERLAYS)).value(),
                                            std::chrono::seconds(3));
    set->show(kind("cost"));
    set->show(kind("trades"));
    overlayLog();
    set.reset();
    EXPECT_EQ(overlayLog(), "ended\ndestroyed\nended\ndestroyed\n");
}

class OverlaySetOnAWindow : public OverlayWindow
{
};

TEST_F(OverlaySetOnAWindow, EndsAnOverlayUnderItsOwnOpenListOnlyAfterTheListIsClosed)
{
    show({QStringLiteral("trades")});
    std::string whileOpen;
    whenOpen<QMenu>([&](QMenu *menu) {
        overlayLog();
        m_window->load(QStringLiteral("000001"), ChartPeriod::Day);
        whileOpen = overlayLog();
        menu->close();
    });
    click(onMark(lastMarkedBar()));
    EXPECT_THAT(whileOpen, HasSubstr("ended"));
    EXPECT_THAT(whileOpen, ::testing::Not(HasSubstr("destroyed")));
    EXPECT_THAT(overlayLog(), ::testing::StartsWith("chose -1\ndestroyed\n"));
}

TEST_F(OverlaySetOnAWindow, MakesTradesAnewForOtherBarsAndKeepsTheCostLine)
{
    show({QStringLiteral("cost"), QStringLiteral("trades")});
    overlayLog();
    m_window->load(QStringLiteral("600519"), ChartPeriod::Week);
    const std::string log = overlayLog();
    EXPECT_EQ(countOf(log, "ended\ndestroyed\n"), 1);
    EXPECT_EQ(countOf(log, "made\n"), 1);
    EXPECT_THAT(log, HasSubstr(" 5\n"));
}

TEST_F(OverlaySetOnAWindow, EndsOverlaysThatAreSwitchedOff)
{
    show({QStringLiteral("cost")});
    overlayLog();
    m_window->overlays()->setShown(*findOverlayKind(QStringLiteral("cost")), false);
    EXPECT_EQ(overlayLog(), "ended\ndestroyed\n");
}

TEST_F(OverlaySetOnAWindow, EndsCombinedOverlays)
{
    show({QStringLiteral("combined-cost")});
    EXPECT_THAT(overlayLog(), ::testing::StartsWith("made\ncombined {\"auto_refresh_time\":3,\"type\":0}\n"));
    m_window->overlays()->setShown(*findOverlayKind(QStringLiteral("combined-cost")), false);
    EXPECT_EQ(overlayLog(), "ended\ndestroyed\n");
}

TEST_F(OverlaySetOnAWindow, MakesCombinedTradesAnewThatWereLost)
{
    show({QStringLiteral("combined-cost"), QStringLiteral("combined-trades"), QStringLiteral("trades")});
    overlayLog();
    m_window->overlays()->renewCombined(QStringLiteral("600519"));
    const std::string log = overlayLog();
    EXPECT_EQ(countOf(log, "ended\ndestroyed\n"), 1);
    EXPECT_EQ(countOf(log, "combined {\"auto_refresh_time\":3,\"type\":1}"), 1);
    EXPECT_EQ(countOf(log, "calc 600519"), 1);
}

TEST_F(OverlaySetOnAWindow, StandsWhenTheLibraryMakesAnOverlayNoMore)
{
    show({QStringLiteral("trades")});
    setLibraryMakesOverlays(false);
    load({QStringLiteral("600519"), ChartPeriod::Week});
    setLibraryMakesOverlays(true);
    m_window->grab(); // the scale asks every overlay what it wishes
    EXPECT_FALSE(m_window->shownOptions().overlays.contains(QStringLiteral("trades"))) << "its button is up";
}

} // namespace
} // namespace Terminal
