#include "tests/tradechartobject/objects/entrustpoint/EntrustPointTest.h"

#include <QElapsedTimer>

#include <functional>

using namespace std::chrono_literals;

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace TradeChart;

namespace {

class EntrustPointWaits : public EntrustPointTest
{
};

TEST_F(EntrustPointWaits, AsksForTodaysOrdersASecondAfterANotification)
{
    createOnThreeMinutes();
    std::size_t askedMeanwhile = 0;
    bool eventsWereHandled = false;
    QTimer::singleShot(300, overlay, [&] {
        eventsWereHandled = true;
        askedMeanwhile = questions().size();
    });
    QElapsedTimer clock;
    clock.start();
    notify();
    EXPECT_GE(clock.elapsed(), 950);
    EXPECT_LT(clock.elapsed(), 3000);
    EXPECT_TRUE(eventsWereHandled);
    EXPECT_EQ(askedMeanwhile, 0U);
    EXPECT_THAT(
        questions(),
        ElementsAre(R"({"cmd":"EntrustTodayTrade","market":"SH","screenId":"screen-1","stkcode":"600536"})"));
}

TEST_F(EntrustPointWaits, KeepsItsOrdersWhateverANotificationOrAQuestionSays)
{
    createOnThreeMinutes();
    hearOrders({SentOrder(), SentOrder{"0B", "2", "11", "9340000"}});
    axis.updated.clear();
    const QJsonObject notification{
        {QStringLiteral("stkcode"), QStringLiteral("600536")},
        {QStringLiteral("data"), QJsonArray{with(SentOrder(), "bsflag2", QStringLiteral("0S"))}}};
    std::vector<std::string> meanwhile;
    QTimer::singleShot(300, overlay, [&] { meanwhile = drawn(); });
    hear(Topic::TRADENOTIFY, notification);
    overlay->sendQueryHistoryEntrustInfoReq(20240102);

    EXPECT_THAT(meanwhile, ElementsAre("0 20 10"));
    EXPECT_THAT(axis.updated, IsEmpty());
    calc(shanghai, minutes({931, 932, 933, 934}), Korvane::IntradayPeriod);
    EXPECT_THAT(drawn(), ElementsAre("0 20 10", "3 20 11"));
}

TEST_F(EntrustPointWaits, AsksOnceForANotification)
{
    createOnThreeMinutes();
    notify();
    // longer than the second after which a second question would come
    EXPECT_FALSE(waitUntil([] { return questions().size() > 1; }, 1500ms));
}

TEST_F(EntrustPointWaits, LeavesARunningTimerAloneAtANotification)
{
    createOnThreeMinutes();
    startTimerOddly();
    notify();
    EXPECT_TRUE(timerRunsOn());
}

TEST_F(EntrustPointWaits, StartsNoTimerAtANotification)
{
    createOnThreeMinutes();
    timer()->stop();
    notify();
    EXPECT_EQ(todayQuestions(), 1);
    EXPECT_FALSE(timer()->isActive());
}

TEST_F(EntrustPointWaits, WaitsOneSecondAlsoWhenThereIsAlwaysSomethingToDo)
{
    createOnThreeMinutes();
    QTimer busy;
    busy.start(0);
    QElapsedTimer clock;
    clock.start();
    notify();
    EXPECT_GE(clock.elapsed(), 950);
    EXPECT_LT(clock.elapsed(), 5000);
    EXPECT_EQ(todayQuestions(), 1);
}

TEST_F(EntrustPointWaits, HearsANotificationInAnyLetterCaseWhateverElseItSays)
{
    create();
    calc(makeSecurity(1, "abC1", 5), threeMinutes, Korvane::IntradayPeriod);
    bus().sent.clear();
    hear(Topic::TRADENOTIFY, R"({"stkcode":"ABc1","market":"2","success":false,"cmd":"x"})");
    EXPECT_EQ(todayQuestions(), 1);
}

TEST_F(EntrustPointWaits, IgnoresNotificationsInOtherChartModes)
{
    createOnThreeMinutes();
    for (const int mode : {0, 2, 3}) {
        axis.mode = mode;
        notify();
    }
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(EntrustPointWaits, AsksThoughTheChartModeChangesInsideTheWait)
{
    createOnThreeMinutes();
    QTimer::singleShot(0, overlay, [this] { axis.mode = Korvane::PastDayChart; });
    notify();
    EXPECT_EQ(todayQuestions(), 1);
}

TEST_F(EntrustPointWaits, HearsANotificationOfNoSecurityWhileItShowsNone)
{
    create();
    hear(Topic::TRADENOTIFY, R"({"ordersno":"7"})");
    EXPECT_EQ(todayQuestions(), 1);
}

TEST_F(EntrustPointWaits, IgnoresAnEmptyNotificationAlsoWhileItShowsNoSecurity)
{
    create();
    hear(Topic::TRADENOTIFY, "{}");
    EXPECT_EQ(todayQuestions(), 0);
}

TEST_F(EntrustPointWaits, HandlesInsideTheWaitWhatWasDueTogetherWithTheNotification)
{
    createOnThreeMinutes();
    bool isHandled = false;
    bool wasHandledMeanwhile = false;
    const auto queue = [this](const std::function<void()> &event) {
        QMetaObject::invokeMethod(overlay, event, Qt::QueuedConnection);
    };
    bus().duringSend = [&] { wasHandledMeanwhile = isHandled; };
    queue([] { notify(); });
    queue([&] { isHandled = true; });
    ASSERT_TRUE(waitUntil([] { return todayQuestions() == 1; }));
    EXPECT_TRUE(wasHandledMeanwhile);
    bus().duringSend = nullptr;
}

TEST_F(EntrustPointWaits, NestsTheWaitsOfNotificationsThatCloselyFollow)
{
    createOnThreeMinutes();
    QTimer::singleShot(100, overlay, [] { notify(); });
    QTimer::singleShot(200, overlay, [] { notify(); });
    notify();
    EXPECT_EQ(todayQuestions(), 3);
}

TEST_F(EntrustPointWaits, HandlesAnAnswerInsideTheWait)
{
    createOnThreeMinutes();
    std::size_t drawnMeanwhile = 0;
    QTimer::singleShot(100, overlay, [&] {
        hearOrders({SentOrder()});
        drawnMeanwhile = drawn().size();
    });
    notify();
    EXPECT_EQ(drawnMeanwhile, 1U);
}

TEST_F(EntrustPointWaits, AsksForTheSecurityThatIsShownWhenTheWaitEnds)
{
    createOnThreeMinutes();
    QTimer::singleShot(100, overlay, [this] {
        calc(shenzhen, threeMinutes, Korvane::IntradayPeriod);
        bus().sent.clear();
    });
    notify();
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("stkcode":"000001")"));
}

} // namespace
