// How overlays begin and end.
#include "tests/terminal/support/OverlayWindow.h"

#include <gmock/gmock.h>

#include <QMenu>

namespace Terminal {
namespace {

using ::testing::HasSubstr;

class OverlaysOnAWindow : public OverlayWindow
{
};

TEST_F(OverlaysOnAWindow, EndsAnOverlayUnderItsOwnOpenListOnlyAfterTheListIsClosed)
{
    show({QStringLiteral("trades")});
    std::string whileOpen;
    whenOpen<QMenu>([&](QMenu *menu) {
        overlayLog();
        m_window->load(QStringLiteral("000001"), ChartPeriod::Day, 0);
        whileOpen = overlayLog();
        menu->close();
    });
    click(onMark(lastMarkedBar()));
    EXPECT_THAT(whileOpen, HasSubstr("ended"));
    EXPECT_THAT(whileOpen, ::testing::Not(HasSubstr("destroyed")));
    EXPECT_THAT(overlayLog(), ::testing::StartsWith("chose -1\ndestroyed\n"));
}

TEST_F(OverlaysOnAWindow, MakesTradesAnewForOtherBarsAndKeepsTheCostLine)
{
    show({QStringLiteral("cost"), QStringLiteral("trades")});
    overlayLog();
    m_window->load(QStringLiteral("600519"), ChartPeriod::Week, 0);
    const std::string log = overlayLog();
    EXPECT_EQ(countOf(log, "ended\ndestroyed\n"), 1);
    EXPECT_EQ(countOf(log, "made\n"), 1);
    EXPECT_THAT(log, HasSubstr(" 5\n"));
}

TEST_F(OverlaysOnAWindow, EndsOverlaysThatAreSwitchedOff)
{
    show({QStringLiteral("cost")});
    overlayLog();
    m_window->overlays()->setShown(*findOverlayKind(QStringLiteral("cost")), false);
    EXPECT_EQ(overlayLog(), "ended\ndestroyed\n");
}

TEST_F(OverlaysOnAWindow, EndsCombinedOverlays)
{
    show({QStringLiteral("combined-cost")});
    EXPECT_THAT(overlayLog(), ::testing::StartsWith("made\ncombined {\"auto_refresh_time\":3,\"type\":0}\n"));
    m_window->overlays()->setShown(*findOverlayKind(QStringLiteral("combined-cost")), false);
    EXPECT_EQ(overlayLog(), "ended\ndestroyed\n");
}

TEST_F(OverlaysOnAWindow, MakesCombinedTradesAnewThatWereLost)
{
    show({QStringLiteral("combined-cost"), QStringLiteral("combined-trades"), QStringLiteral("trades")});
    overlayLog();
    m_window->overlays()->renewCombined(QStringLiteral("600519"));
    const std::string log = overlayLog();
    EXPECT_EQ(countOf(log, "ended\ndestroyed\n"), 1);
    EXPECT_EQ(countOf(log, "combined {\"auto_refresh_time\":3,\"type\":1}"), 1);
    EXPECT_EQ(countOf(log, "calc 600519"), 1);
}

} // namespace
} // namespace Terminal
