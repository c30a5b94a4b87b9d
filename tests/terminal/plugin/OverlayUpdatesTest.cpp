// When overlays are calculated, and with what.
#include "tests/terminal/support/OverlayWindow.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using ::testing::HasSubstr;

class CalculationOfOverlays : public OverlayWindow
{
};

TEST_F(CalculationOfOverlays, HandsOverTheWholeLoadedRangeAndNotWhatIsInView)
{
    show({QStringLiteral("cost")});
    EXPECT_THAT(overlayLog(), HasSubstr("calc 600519 2890 4"));
    chart()->setSpan({100, 200});
    QApplication::processEvents();
    EXPECT_EQ(overlayLog(), "");
}

TEST_F(CalculationOfOverlays, AnswersARequestForARepaintWithOneCalculation)
{
    show({QStringLiteral("cost")});
    QApplication::processEvents();
    EXPECT_EQ(countOf(overlayLog(), "calc"), 2); // when it was made, and for its own request
}

TEST_F(CalculationOfOverlays, CalculatesCombinedOverlaysOnlyWhenATradingModuleAnswers)
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

TEST_F(CalculationOfOverlays, ShowsWhatCombinedOverlaysOfItsSecurityHaveHeard)
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
