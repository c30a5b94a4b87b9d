#include "terminal/chart/view/ChartView.h"
#include "terminal/plugin/CombinedOverlay.h"
#include "terminal/plugin/HiddenAmounts.h"
#include "terminal/plugin/HostAxis.h"
#include "terminal/plugin/HostRecords.h"
#include "tests/support/ByName.h"
#include "tests/terminal/SomeBars.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using ::testing::_;
using ::testing::Return;

class MockPrompts : public UserPrompts
{
public:
    MOCK_METHOD(int, choose, (const QStringList &rows, const QPoint &place), (override));
    MOCK_METHOD(void, show, (const QString &text), (override));
    MOCK_METHOD(bool, confirm, (const QString &question), (override));
};

TEST(HostRecords, CarryADayAsItsDate)
{
    EXPECT_EQ(packedTime({20240102, 0, 1, 1, 1, 1, 1}), 20240102U);
}

TEST(HostRecords, PackAMinuteIntoYearMonthDayAndMinutes)
{
    const std::uint32_t time = packedTime({20240102, 571, 1, 1, 1, 1, 1});
    EXPECT_EQ(time >> 27U, 20U);
    EXPECT_EQ((time >> 16U) & 0x7FFU, 102U);
    EXPECT_EQ(time & 0xFFFFU, 571U);
}

TEST(HostRecords, CutALongNameBetweenTwoCharacters)
{
    const Security security{QStringLiteral("600519"), Market::Shanghai, QString(20, QChar(u'茅'))};
    const Korvane::tagCodeWithName record = hostSecurity(security, 7);
    EXPECT_EQ(QString::fromUtf8(record.name), QString(10, QChar(u'茅')));
    EXPECT_STREQ(record.code, "600519");
    EXPECT_EQ(record.market, 1);
    EXPECT_EQ(record.identity, 7);
}

TEST(HostRecords, KeepANameThatJustFits)
{
    const Security security{QStringLiteral("1"), Market::Shenzhen, QString(31, QLatin1Char('x'))};
    EXPECT_EQ(std::string(hostSecurity(security, 1).name), std::string(31, 'x'));
}

TEST(HostRecords, GiveEverySecurityItsOwnIdentity)
{
    const Security one{QStringLiteral("000001"), Market::Shanghai, QStringLiteral("a")};
    const Security other{QStringLiteral("000001"), Market::Shenzhen, QStringLiteral("a")};
    EXPECT_EQ(securityIdentity(one), securityIdentity(one));
    EXPECT_NE(securityIdentity(one), securityIdentity(other));
}

class HostAxisOfAChart : public ::testing::Test
{
protected:
    HostAxisOfAChart()
    {
        m_chart.resize(1000, 600);
        m_chart.setData(dailyChart(300));
        m_chart.show();
        m_chart.grab();
    }

    ChartView m_chart;
    MockPrompts m_prompts;
    HostAxis m_axis{&m_chart, &m_prompts, "screen-1", nullptr};
};

TEST_F(HostAxisOfAChart, MapsEveryBarThereAndBack)
{
    for (const int bar : {150, 200, 299}) {
        EXPECT_EQ(m_axis.xToBar(m_axis.barToX(bar)), bar);
    }
}

TEST_F(HostAxisOfAChart, NumbersBarsByTheLoadedRangeWhateverIsInView)
{
    m_chart.setSpan({99.5, 149.5});
    EXPECT_EQ(m_axis.xToBar(m_axis.barToX(120)), 120);
    EXPECT_NEAR(m_axis.barToX(100), m_chart.chartGeometry().barWidth() / 2, 1.5);
}

TEST_F(HostAxisOfAChart, HoldsTheBarInsideTheLoadedRange)
{
    EXPECT_EQ(m_axis.xToBar(1e6), 299);
    EXPECT_EQ(m_axis.xToBar(-1e6), 0);
}

TEST_F(HostAxisOfAChart, MapsThePriceRangeToThePaneUpsideDown)
{
    double low = 0;
    double high = 0;
    ASSERT_TRUE(m_axis.visiblePriceRange(low, high));
    EXPECT_LT(low, high);
    EXPECT_NEAR(m_axis.priceToY(high, -1, -1), 0, 1);
    EXPECT_GT(m_axis.priceToY(low, -1, -1), 300);
    EXPECT_TRUE(std::isnan(m_axis.priceToY(std::nan(""), -1, -1)));
}

TEST_F(HostAxisOfAChart, CopiesABar)
{
    Korvane::AnalyData bar{};
    m_axis.barAt(7, bar);
    EXPECT_EQ(bar.time, static_cast<std::uint32_t>(m_chart.data().bars[7].date));
    EXPECT_DOUBLE_EQ(bar.high, m_chart.data().bars[7].high);
    EXPECT_DOUBLE_EQ(bar.low, m_chart.data().bars[7].low);
    EXPECT_DOUBLE_EQ(bar.close, m_chart.data().bars[7].close);
}

TEST_F(HostAxisOfAChart, LeavesTheRecordAloneForABarThatIsNot)
{
    Korvane::AnalyData bar{};
    bar.time = 99;
    m_axis.barAt(300, bar);
    m_axis.barAt(-1, bar);
    EXPECT_EQ(bar.time, 99U);
}

TEST_F(HostAxisOfAChart, HasNoScaleWithoutBars)
{
    m_chart.setData({});
    double low = 0;
    double high = 0;
    EXPECT_FALSE(m_axis.visiblePriceRange(low, high));
}

TEST_F(HostAxisOfAChart, KnowsTodaysChartFromAPastDays)
{
    ChartData minutes{{QStringLiteral("1"), Market::Shenzhen, QStringLiteral("x")},
                      ChartPeriod::Minute,
                      {{20240102, 571, 1, 1, 1, 1, 1}}};
    EXPECT_EQ(m_axis.chartMode(), 0);
    m_chart.setData(minutes);
    EXPECT_EQ(m_axis.chartMode(), 2);
    minutes.bars.front().date = static_cast<std::int32_t>(TradeChart::currentDate());
    m_chart.setData(minutes);
    EXPECT_EQ(m_axis.chartMode(), 1);
}

TEST_F(HostAxisOfAChart, PassesTheRowsOfAPopUpAsText)
{
    const char *rows[] = {"买入\t09:30:15", "卖出", nullptr};
    EXPECT_CALL(m_prompts, choose(QStringList{QStringLiteral(u"买入\t09:30:15"), QStringLiteral(u"卖出")}, _))
        .WillOnce(Return(1));
    EXPECT_EQ(m_axis.popupMenu(rows, nullptr), 1);
}

TEST_F(HostAxisOfAChart, ChoosesNothingFromAnEmptyPopUp)
{
    const char *rows[] = {nullptr};
    EXPECT_CALL(m_prompts, choose).Times(0);
    EXPECT_EQ(m_axis.popupMenu(rows, nullptr), -1);
    EXPECT_EQ(m_axis.popupMenu(nullptr, nullptr), -1);
}

TEST_F(HostAxisOfAChart, PassesQuestionsAndMessagesOn)
{
    EXPECT_CALL(m_prompts, confirm(QStringLiteral(u"撤单?\n1"))).WillOnce(Return(true));
    EXPECT_CALL(m_prompts, show(QStringLiteral(u"撤单成功")));
    EXPECT_TRUE(m_axis.confirmBox("撤单?\n1"));
    m_axis.showMessage("撤单成功");
}

struct TextWithAmounts
{
    const char *name;
    const char *shown;
    const char *hidden;
};

class Amounts : public ::testing::TestWithParam<TextWithAmounts>
{
};

TEST_P(Amounts, AreHiddenAndPricesAreNot)
{
    EXPECT_EQ(withoutAmounts(QString::fromUtf8(GetParam().shown)).toStdString(), GetParam().hidden);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, Amounts,
    ::testing::Values(
        TextWithAmounts{"cost", "持仓成本:1890.058", "持仓成本:***"},
        TextWithAmounts{"trade", "买入\t09:30:15\t成交价:10.50\t成交量:300",
                        "买入\t09:30:15\t成交价:10.50\t成交量:***"},
        TextWithAmounts{
            "order",
            "买入[测试]\n状态:部成(未成可撤)\n编号:7\n委托时间:09:32:05\n委托价格:9.500\n委托数量:300\n"
            "成交均价:9.480\n成交数量:100\n可撤数量:200\n委托日期:20240105",
            "买入[测试]\n状态:部成(未成可撤)\n编号:7\n委托时间:09:32:05\n委托价格:9.500\n委托数量:***\n"
            "成交均价:9.480\n成交数量:***\n可撤数量:***\n委托日期:20240105"},
        TextWithAmounts{"cancelledPart", "已撤数量:12345\n委托日期:20240105",
                        "已撤数量:***\n委托日期:20240105"},
        TextWithAmounts{"nothing", "撤单成功", "撤单成功"}),
    ByName());

TEST_F(HostAxisOfAChart, HidesAmountsInListsButNotInQuestions)
{
    m_axis.setAmountsHidden(true);
    const char *rows[] = {"买入\t成交价:10.50\t成交量:300", nullptr};
    EXPECT_CALL(m_prompts, choose(QStringList(QStringLiteral(u"买入\t成交价:10.50\t成交量:***")), _))
        .WillOnce(Return(-1));
    m_axis.popupMenu(rows, nullptr);
    EXPECT_CALL(m_prompts, confirm(QStringLiteral(u"撤单?\n委托数量:300"))).WillOnce(Return(false));
    m_axis.confirmBox("撤单?\n委托数量:300");
}

/// The axis of a combined overlay, whose list of three lines ends with the memory that it stands in.
class CombinedAxisOfAChart : public HostAxisOfAChart
{
protected:
    int choose() { return m_combined.popupMenu(m_lines.data(), nullptr); }

    std::vector<const char *> m_lines = {"one", "two", "three"};
    CombinedAxis m_combined{m_axis};
    QObject m_caller;
};

TEST_F(CombinedAxisOfAChart, ShowsAsManyLinesAsTheCallerTells)
{
    m_caller.setProperty("popupLineCount", 3);
    m_combined.setCaller(&m_caller);
    EXPECT_CALL(m_prompts,
                choose(QStringList{QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("three")}, _))
        .WillOnce(Return(2));
    EXPECT_EQ(choose(), 2);
}

TEST_F(CombinedAxisOfAChart, ShowsTheFirstLineOfACallerThatDoesNotTell)
{
    m_combined.setCaller(&m_caller);
    EXPECT_CALL(m_prompts, choose(QStringList(QStringLiteral("one")), _)).WillOnce(Return(-1));
    EXPECT_EQ(choose(), -1);
}

TEST_F(CombinedAxisOfAChart, IsTheChartInAllElse)
{
    EXPECT_EQ(m_combined.chartMode(), m_axis.chartMode());
    EXPECT_STREQ(m_combined.screenId(), "screen-1");
    EXPECT_EQ(m_combined.markerSize(), m_axis.markerSize());
    EXPECT_EQ(m_combined.barToX(250), m_axis.barToX(250));
    EXPECT_EQ(m_combined.priceToY(100, -1, -1), m_axis.priceToY(100, -1, -1));
    EXPECT_EQ(m_combined.xToBar(300), m_axis.xToBar(300));
    Korvane::AnalyData bar{};
    m_combined.barAt(7, bar);
    EXPECT_EQ(bar.close, m_chart.data().bars[7].close);
    double low = 0;
    double high = 0;
    EXPECT_TRUE(m_combined.visiblePriceRange(low, high));
    EXPECT_EQ(high, m_chart.chartGeometry().highPrice);
    Korvane::IChartObject *updated = nullptr;
    QObject::connect(&m_axis, &HostAxis::updateRequested, &m_axis,
                     [&updated](Korvane::IChartObject *object) { updated = object; });
    auto *const object = reinterpret_cast<Korvane::IChartObject *>(this);
    m_combined.updateObject(object);
    EXPECT_EQ(updated, object);
    EXPECT_CALL(m_prompts, confirm(QStringLiteral("sure?"))).WillOnce(Return(true));
    EXPECT_CALL(m_prompts, show(QStringLiteral("done")));
    EXPECT_TRUE(m_combined.confirmBox("sure?"));
    m_combined.showMessage("done");
}

} // namespace
} // namespace Terminal
