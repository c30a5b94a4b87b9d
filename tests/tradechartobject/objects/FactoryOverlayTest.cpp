// What the three overlays of the factory have in common: their life on the bus and their refresh timer.
#include "tests/support/OverlayTest.h"

#include "tradechartobject/objects/BSPoint.h"
#include "tradechartobject/objects/EntrustPoint.h"
#include "tradechartobject/objects/PositionCost.h"

#include <QCoreApplication>

#include <type_traits>

using namespace std::chrono_literals;

using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

template <class Overlay>
class FactoryOverlay : public OverlayTest<Overlay>
{
protected:
    /// An object that shows a security on one bar of its period, so that its timer runs.
    void createOnABar(const QJsonValue &refreshTime = QJsonValue::Undefined)
    {
        QJsonObject config;
        config.insert(QStringLiteral("auto_refresh_time"), refreshTime);
        this->create(config);
        ASSERT_TRUE(calcOnABar());
        ASSERT_TRUE(this->timer()->isActive());
    }

    bool calcOnABar()
    {
        constexpr bool isDaily = std::is_same_v<Overlay, BSPoint>;
        return this->calc(this->shanghai, {makeDayBar(20240102)},
                          isDaily ? Korvane::DayPeriod : Korvane::IntradayPeriod);
    }

    /// From now on the host ends the object as soon as it asks something.
    void endAtTheNextQuestion()
    {
        this->axis.mode = Korvane::TodayChart; // a chart of today, on which the order points ask
        this->bus().duringSend = [this] { this->overlay->deleteObject(); };
    }

    void expectEndedAfterOneQuestion()
    {
        EXPECT_THAT(this->questions(), SizeIs(1));
        EXPECT_EQ(this->timer(), nullptr);
        this->paint();
        EXPECT_EQ(this->timer(), nullptr);
    }
};

using Overlays = ::testing::Types<PositionCost, BSPoint, EntrustPoint>;

struct ByClass
{
    template <class Overlay>
    static std::string GetName(int)
    {
        return std::is_same_v<Overlay, PositionCost> ? "PositionCost"
               : std::is_same_v<Overlay, BSPoint>    ? "BSPoint"
                                                     : "EntrustPoint";
    }
};

TYPED_TEST_SUITE(FactoryOverlay, Overlays, ByClass);

TYPED_TEST(FactoryOverlay, JoinsTheTerminalsBusListensAndSubscribesInThisOrder)
{
    this->create();
    EXPECT_EQ(this->bus().operations,
              (QStringList{QStringLiteral("create"),
                           QStringLiteral("connect ") + QCoreApplication::applicationDirPath(),
                           QStringLiteral("listened to"),
                           QStringLiteral("subscribe list screen-1 TradeNotify,TradeQuery"),
                           QStringLiteral("subscribe Global TradeNotify")}));
}

TYPED_TEST(FactoryOverlay, IsAPluginObjectForTheHost)
{
    EXPECT_EQ(this->create().type(), 3);
}

TYPED_TEST(FactoryOverlay, HasNoSignalsSlotsOrPropertiesOfItsOwn)
{
    EXPECT_EQ(this->create().metaObject(), &QObject::staticMetaObject);
}

TYPED_TEST(FactoryOverlay, LeavesTheBusWhenDestroyed)
{
    this->create();
    this->bus().operations.clear();
    this->destroy();
    EXPECT_EQ(this->bus().operations, (QStringList{QStringLiteral("disconnect"), QStringLiteral("destroy")}));
    EXPECT_EQ(this->bus().endPointCount(), 0);
}

TYPED_TEST(FactoryOverlay, EndsTheProcessWhenTheBusClientThrowsAtTheEnd)
{
    this->create();
    this->bus().duringDisconnect = [] { throw 1; };
    EXPECT_DEATH(this->destroy(), "");
    this->bus().duringDisconnect = nullptr;
}

TYPED_TEST(FactoryOverlay, EndsItsTimerOnDeleteObject)
{
    this->createOnABar();
    EXPECT_TRUE(this->overlay->deleteObject());
    EXPECT_EQ(this->timer(), nullptr);
    EXPECT_TRUE(this->overlay->deleteObject()) << "a second call finds nothing to end";
}

TYPED_TEST(FactoryOverlay, StaysOnTheBusAfterDeleteObjectUntilItIsDestroyed)
{
    this->createOnABar();
    this->bus().operations.clear();
    this->overlay->deleteObject();
    this->overlay->deleteObject();
    EXPECT_THAT(this->bus().operations, IsEmpty());
    EXPECT_EQ(this->bus().endPointCount(), 1);
    this->destroy();
    EXPECT_EQ(this->bus().operations, (QStringList{QStringLiteral("disconnect"), QStringLiteral("destroy")}));
}

TYPED_TEST(FactoryOverlay, IsEndedByTheHostWhileTheQuestionOfCalcItGoesOut)
{
    this->create();
    this->endAtTheNextQuestion();
    EXPECT_TRUE(this->calcOnABar());
    this->expectEndedAfterOneQuestion();
}

TYPED_TEST(FactoryOverlay, IsEndedByTheHostWhileTheQuestionOfItsTimerGoesOut)
{
    this->createOnABar(0);
    this->bus().sent.clear();
    this->endAtTheNextQuestion();
    EXPECT_TRUE(waitUntil([this] { return !this->questions().empty(); }));
    this->expectEndedAfterOneQuestion();
}

TYPED_TEST(FactoryOverlay, RefreshesEveryTenSecondsUnlessConfigured)
{
    this->createOnABar();
    EXPECT_EQ(this->timer()->interval(), 10000);
    EXPECT_TRUE(this->timer()->isSingleShot());
}

TYPED_TEST(FactoryOverlay, TakesTheRefreshIntervalFromItsConfiguration)
{
    this->createOnABar(3);
    EXPECT_EQ(this->timer()->interval(), 3000);
}

TYPED_TEST(FactoryOverlay, TakesARefreshIntervalOfZeroAtItsWord)
{
    this->createOnABar(0);
    EXPECT_EQ(this->timer()->interval(), 0);
}

TYPED_TEST(FactoryOverlay, SurvivesARefreshIntervalThatNoTimerCanCount)
{
    this->createOnABar(2147483647);
    EXPECT_EQ(this->timer()->interval(), 2147483647);
}

TYPED_TEST(FactoryOverlay, ReadsARefreshIntervalThatIsNoneAsTheDefault)
{
    for (const QJsonValue &interval :
         {QJsonValue(QStringLiteral("3")), QJsonValue(3.5), QJsonValue(QJsonValue::Null), QJsonValue(true)}) {
        this->createOnABar(interval);
        EXPECT_EQ(this->timer()->interval(), 10000);
    }
}

TYPED_TEST(FactoryOverlay, HandsANegativeRefreshIntervalToItsTimerWhichRefreshesNothing)
{
    const LogCapture log; // Qt says that it refuses such an interval
    for (const int seconds : {-1, -2147483647}) {
        this->create({{QStringLiteral("auto_refresh_time"), seconds}});
        this->calcOnABar();
        this->bus().sent.clear();
        EXPECT_LT(this->timer()->interval(), 0);
        // an interval of nothing would have asked in the first turn of the loop
        EXPECT_FALSE(waitUntil([this] { return !this->questions().empty(); }, 100ms));
    }
}

} // namespace
