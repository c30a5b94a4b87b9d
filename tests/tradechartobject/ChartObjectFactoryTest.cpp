#include "tests/support/ByName.h"
#include "tests/support/OverlayTest.h"

#include "tradechartobject/ChartObjectFactory.h"
#include "tradechartobject/objects/BSPoint.h"
#include "tradechartobject/objects/EntrustPoint.h"
#include "tradechartobject/objects/PositionCost.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::NotNull;
using ::testing::SizeIs;

namespace {

class ChartObjectFactoryTest : public ::testing::Test
{
protected:
    ChartObjectFactoryTest() { RecordedBus::instance().reset(); }

    Korvane::IChartObject *create(const char *json)
    {
        object.reset(CreateChartObject(axis, json));
        return object.get();
    }

    FakeAxis axis;
    std::unique_ptr<Korvane::IChartObject> object;
};

TEST_F(ChartObjectFactoryTest, CreatesTheCostLineForTypeZero)
{
    EXPECT_THAT(dynamic_cast<PositionCost *>(create(R"({"type":0})")), NotNull());
}

TEST_F(ChartObjectFactoryTest, CreatesTheBuySellPointsForTypeOne)
{
    EXPECT_THAT(dynamic_cast<BSPoint *>(create(R"({"type":1})")), NotNull());
}

TEST_F(ChartObjectFactoryTest, CreatesTheOrderPointsForTypeTwo)
{
    EXPECT_THAT(dynamic_cast<EntrustPoint *>(create(R"({"type":2})")), NotNull());
}

TEST_F(ChartObjectFactoryTest, CreatesObjectsWithoutAParent)
{
    EXPECT_EQ(dynamic_cast<QObject *>(create(R"({"type":0})"))->parent(), nullptr);
}

TEST_F(ChartObjectFactoryTest, LeavesTheRefreshIntervalAtTenSeconds)
{
    create(R"({"type":0})");
    object->calcIt(makeSecurity(1, "600536", 1), nullptr, 0, Korvane::DayPeriod, 0, 0);
    EXPECT_EQ(dynamic_cast<QObject *>(object.get())->findChild<QTimer *>()->interval(), 10000);
}

TEST_F(ChartObjectFactoryTest, ReadsItsConfigurationAsUtf8)
{
    EXPECT_THAT(create(R"({"名":"成本","type":0})"), NotNull());
}

TEST_F(ChartObjectFactoryTest, HandsTheConfigurationToTheObject)
{
    create(R"({"type":0,"auto_refresh_time":4})");
    object->calcIt(makeSecurity(1, "600536", 1), nullptr, 0, Korvane::DayPeriod, 0, 0);
    EXPECT_EQ(dynamic_cast<QObject *>(object.get())->findChild<QTimer *>()->interval(), 4000);
}

TEST_F(ChartObjectFactoryTest, ReturnsTheHostsViewOfTheObject)
{
    auto *view = create(R"({"type":0})");
    auto *whole = dynamic_cast<PositionCost *>(view);
    EXPECT_EQ(view, static_cast<Korvane::IChartObject *>(whole));
    EXPECT_NE(static_cast<void *>(view), static_cast<void *>(static_cast<QObject *>(whole)));
}

TEST_F(ChartObjectFactoryTest, DestroysTheWholeObjectThroughTheHostsView)
{
    create(R"({"type":0})");
    const QPointer<QObject> whole = dynamic_cast<QObject *>(object.get());
    object.reset();
    EXPECT_TRUE(whole.isNull());
    EXPECT_EQ(RecordedBus::instance().endPointCount(), 0);
}

struct UnknownType
{
    const char *name;
    const char *json;
    const char *logged;
};

class ChartObjectFactoryRefuses : public ChartObjectFactoryTest,
                                  public ::testing::WithParamInterface<UnknownType>
{
};

TEST_P(ChartObjectFactoryRefuses, WithNullAndOneCriticalLine)
{
    const LogCapture log;
    EXPECT_EQ(create(GetParam().json), nullptr);
    EXPECT_THAT(
        log.lines(QtCriticalMsg),
        ElementsAre(QStringLiteral("Unknown algorithmType in CreateChartObject(), algorithmType is : ") +
                    QLatin1String(GetParam().logged)));
    EXPECT_THAT(log.all(), SizeIs(1));
    EXPECT_THAT(RecordedBus::instance().operations, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Configurations, ChartObjectFactoryRefuses,
    ::testing::Values(UnknownType{"TheTypeThree", R"({"type":3})", "3"},
                      UnknownType{"ANegativeType", R"({"type":-5})", "-5"},
                      UnknownType{"ATypeAsText", R"({"type":"0"})", "-1"},
                      UnknownType{"ATypeWithAFraction", R"({"type":0.5})", "-1"},
                      UnknownType{"ATypeAsABoolean", R"({"type":true})", "-1"},
                      UnknownType{"ANullType", R"({"type":null})", "-1"},
                      UnknownType{"ATypeThatIsZeroInItsLow32Bits", R"({"type":4294967296})", "-1"},
                      UnknownType{"ATypeBeyondAllIntegers", R"({"type":1e300})", "-1"},
                      UnknownType{"AnObjectWithoutType", R"({"auto_refresh_time":3})", "-1"},
                      UnknownType{"AnArray", R"([{"type":0}])", "-1"},
                      UnknownType{"BrokenJson", R"({"type":0)", "-1"},
                      UnknownType{"TrailingWords", R"({"type":0} x)", "-1"},
                      UnknownType{"AnEmptyText", "", "-1"}, UnknownType{"ANullText", nullptr, "-1"}),
    ByName());

} // namespace
