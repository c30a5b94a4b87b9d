// What a screen reader reads of the chart.
#include "tests/terminal/support/OverlayWindow.h"

#include <gmock/gmock.h>

#include <QAccessible>

namespace Terminal {
namespace {

class ChartAccessibleTest : public OverlayWindow
{
protected:
    QString spoken(QAccessible::Text kind)
    {
        return QAccessible::queryAccessibleInterface(chart())->text(kind);
    }
};

TEST_F(ChartAccessibleTest, NamesTheSecurityTheRangeAndTheLastBar)
{
    showMarks();
    speakEnglish();
    EXPECT_EQ(QAccessible::queryAccessibleInterface(chart())->role(), QAccessible::Chart);
    EXPECT_EQ(spoken(QAccessible::Name).toStdString(), "贵州茅台 600519, Day");
    EXPECT_THAT(spoken(QAccessible::Description).toStdString(),
                ::testing::StartsWith("贵州茅台 600519, Day; 2021-10-11 to 2021-12-03, 40 bars; "
                                      "last 2021-12-03: close 1971.88, change +1.96%; "));
}

TEST_F(ChartAccessibleTest, CountsTheMarksInView)
{
    showMarks();
    chart()->grab();
    EXPECT_THAT(spoken(QAccessible::Description).toStdString(),
                ::testing::EndsWith("; 买入 5, 卖出 4, 买卖 5"));
    speakEnglish();
    chart()->grab();
    EXPECT_THAT(spoken(QAccessible::Description).toStdString(),
                ::testing::EndsWith("; buys 5, sells 4, both 5"));
    chart()->setSpan({lastMarkedBar() - 12.5, lastMarkedBar() + 0.5});
    chart()->grab();
    EXPECT_THAT(spoken(QAccessible::Description).toStdString(),
                ::testing::EndsWith("; buys 2, sells 1, both 2"));
}

TEST_F(ChartAccessibleTest, ReadsTheCostUnlessAmountsAreHidden)
{
    show({QStringLiteral("cost")});
    chart()->grab();
    EXPECT_TRUE(spoken(QAccessible::Description).contains(QStringLiteral(u"; 持仓成本:1")));
    m_window->overlays()->setAmountsHidden(true);
    chart()->grab();
    EXPECT_TRUE(spoken(QAccessible::Description).endsWith(QStringLiteral(u"; 持仓成本:***")));
}

TEST_F(ChartAccessibleTest, ReadsTheMarkThatTheKeyboardIsOn)
{
    showMarks();
    speakEnglish();
    key(Qt::Key_P);
    const int kind = lastMarkedBar() / 3 % 3;
    const char *const names[] = {"buys", "sells", "both"};
    EXPECT_EQ(spoken(QAccessible::Value).toStdString(), std::string(names[kind]) + " 1, 2021-12-03");
    key(Qt::Key_Escape);
    EXPECT_EQ(spoken(QAccessible::Value), QString());
}

TEST_F(ChartAccessibleTest, SaysNothingWithoutBars)
{
    ChartView empty;
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&empty)->text(QAccessible::Description), QString());
}

TEST_F(ChartAccessibleTest, ReadsWhereACostLiesThatTheScaleDoesNotShow)
{
    show({QStringLiteral("cost")});
    chart()->setSpan({-0.5, 50});
    chart()->grab();
    EXPECT_TRUE(spoken(QAccessible::Description).endsWith(QStringLiteral(u" ↑"))) << "as its label says";
}

} // namespace
} // namespace Terminal
