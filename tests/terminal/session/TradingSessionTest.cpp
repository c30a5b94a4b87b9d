// The stages of a trading day, against a module that says what the test wants.
#include "terminal/session/TradingSession.h"
#include "endpoint/Announcement.h"
#include "tests/support/TestBroker.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/ScriptedModule.h"
#include "trading/Presence.h"

#include <gmock/gmock.h>

#include <memory>
#include <vector>

namespace Terminal {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Stage = TradingSession::Stage;

constexpr std::chrono::milliseconds shortPatience{200};

class TradingSessionTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_plan.patience = std::chrono::hours(1);
        m_module.setAnswer(QStringLiteral("EntrustTodayTrade"), {});
        m_module.setAnswer(QStringLiteral("AccountInfo"), {});
        ASSERT_TRUE(waitUntil([this] { return m_module.isReady(); }));
    }

    void TearDown() override { m_session.reset(); }

    /// The trading module answers from now on.
    void letModuleAnswer() { m_module.setAnswer(QStringLiteral("HolderCostPrice"), {}); }

    /// The trading module announces itself, until its word is stopped.
    void sayOnline(const QStringList &can = {})
    {
        Trading::TradePresence presence;
        presence.can = can;
        presence.instance = QStringLiteral("one");
        presence.isOnline = true;
        m_word.start(m_broker.address(),
                     {"Global", "TradePresence", presence.toJson(), presence.ended().toJson()});
    }

    /// Begins the day by the plan and joins the bus.
    void begin()
    {
        m_session = std::make_unique<TradingSession>(m_folder, m_plan, m_broker.address());
        QObject::connect(m_session.get(), &TradingSession::stageChanged, m_session.get(),
                         [this](Stage stage) { m_stages.push_back(stage); });
        QObject::connect(m_session.get(), &TradingSession::overlaysDue, m_session.get(),
                         [this] { ++m_overlaysDue; });
        QObject::connect(replay(), &Replay::restarted, replay(), [this] { ++m_restarts; });
        if (m_plan.replaySpeed > 0) {
            ASSERT_EQ(m_session->openReplay(minutes()), QString());
        }
        m_restarts = 0;
        m_session->begin();
        m_session->join();
    }

    ChartData minutes() const
    {
        return m_folder.load(QStringLiteral("000001"), ChartPeriod::Minute, onDay(20180108)).value();
    }

    /// That minutes() is practised, and how far.
    static PractisedDay practised(std::optional<Trading::ClockTime> reached = {})
    {
        return {QStringLiteral("000001"), onDay(20180108), reached};
    }

    /// Hears what is refused of the plan.
    QStringList *hearRefusals()
    {
        QObject::connect(m_session.get(), &TradingSession::orderRefused, m_session.get(),
                         [this](const QString &reason) { m_refusals.append(reason); });
        return &m_refusals;
    }

    Replay *replay() { return m_session->replay(); }
    bool comesTo(Stage stage)
    {
        return waitUntil([=] { return m_session->stage() == stage; });
    }

    const DataFolder m_folder = DataFolder::open(QStringLiteral(TRADECHART_EXAMPLES)).value();
    DayPlan m_plan;
    TestBroker m_broker;
    ScriptedModule m_module{m_broker.address()};
    LocalCommunication::Announcement m_word;
    std::unique_ptr<TradingSession> m_session;
    std::vector<Stage> m_stages;
    QStringList m_refusals;
    int m_overlaysDue = 0;
    int m_restarts = 0;
};

TEST_F(TradingSessionTest, BeginsWithTheModuleThatAnswers)
{
    letModuleAnswer();
    begin();
    ASSERT_TRUE(comesTo(Stage::Trading));
    EXPECT_THAT(m_stages, ElementsAre(Stage::Awaiting, Stage::Trading));
    EXPECT_EQ(m_overlaysDue, 1);
}

TEST_F(TradingSessionTest, GoesOnAloneAfterAMomentAndIsJoinedByAModuleThatComesLater)
{
    m_plan.patience = shortPatience;
    begin();
    ASSERT_TRUE(comesTo(Stage::Alone));
    EXPECT_EQ(m_overlaysDue, 1);
    letModuleAnswer();
    ASSERT_TRUE(comesTo(Stage::Trading));
    EXPECT_EQ(m_overlaysDue, 2) << "what was asked before is lost";
}

TEST_F(TradingSessionTest, LetsOverlaysAskAgainWhenAModuleIsBack)
{
    letModuleAnswer();
    begin();
    ASSERT_TRUE(comesTo(Stage::Trading));
    ASSERT_EQ(m_overlaysDue, 1);
    sayOnline();
    ASSERT_TRUE(waitUntil([this] { return m_session->module()->presence().has_value(); }));
    m_word.stop();
    ASSERT_TRUE(waitUntil([this] { return !m_session->module()->presence(); }));
    sayOnline();
    ASSERT_TRUE(waitUntil([this] { return m_overlaysDue > 1; }));
    EXPECT_EQ(m_overlaysDue, 2) << "what a chart asked meanwhile is lost";
}

TEST_F(TradingSessionTest, AsksForWorkingOrdersAsSoonAsAModuleSaysThatItTellsThem)
{
    constexpr std::chrono::seconds beforeTheNextHeartbeat(2);
    letModuleAnswer();
    begin();
    ASSERT_TRUE(comesTo(Stage::Trading));
    m_session->desk()->watch();
    ASSERT_THAT(m_module.asked(QStringLiteral("OpenOrders")), IsEmpty());
    sayOnline({QStringLiteral("openorders")});
    EXPECT_TRUE(waitUntil([this] { return !m_module.asked(QStringLiteral("OpenOrders")).empty(); },
                          beforeTheNextHeartbeat));
}

TEST_F(TradingSessionTest, LetsOverlaysAskAgainWhenTheBusWasAwayForAMoment)
{
    letModuleAnswer();
    begin();
    ASSERT_TRUE(comesTo(Stage::Trading));
    ASSERT_EQ(m_overlaysDue, 1);
    m_broker.kill();
    m_broker.start();
    ASSERT_TRUE(waitUntil([this] { return m_overlaysDue > 1; }));
    EXPECT_EQ(m_overlaysDue, 2) << "what a chart asked meanwhile is lost";
}

TEST_F(TradingSessionTest, TellsTheModuleOfTheReplayBeforeOverlaysAsk)
{
    m_plan.replaySpeed = Replay::slowest;
    m_plan.replayTo = atTime(1000);
    begin();
    letModuleAnswer();
    ASSERT_TRUE(comesTo(Stage::Informing));
    EXPECT_EQ(replay()->completed(), 31U);
    EXPECT_EQ(m_overlaysDue, 0);
    ASSERT_TRUE(comesTo(Stage::Trading));
    EXPECT_EQ(m_overlaysDue, 1);
    EXPECT_EQ(replay()->state(), Replay::State::Playing);
}

TEST_F(TradingSessionTest, OfAPictureStopsWhereItWasPlayedTo)
{
    m_plan.replaySpeed = Replay::fastest;
    m_plan.replayTo = atTime(1000);
    m_plan.playsOn = false;
    letModuleAnswer();
    begin();
    ASSERT_TRUE(comesTo(Stage::Trading));
    EXPECT_EQ(replay()->state(), Replay::State::Paused);
}

TEST_F(TradingSessionTest, IsNotBegunAgainWhenAModuleComesToARunningReplay)
{
    m_plan.patience = shortPatience;
    m_plan.replaySpeed = Replay::slowest;
    begin();
    ASSERT_TRUE(comesTo(Stage::Alone));
    EXPECT_EQ(replay()->state(), Replay::State::Playing);
    replay()->playTo(atTime(1000));
    m_restarts = 0;
    letModuleAnswer();
    ASSERT_TRUE(comesTo(Stage::Trading));
    EXPECT_THAT(m_stages, ElementsAre(Stage::Awaiting, Stage::Alone, Stage::Trading));
    EXPECT_EQ(m_restarts, 0);
    EXPECT_EQ(replay()->completed(), 31U);
}

TEST_F(TradingSessionTest, StaysPausedByItsUserWhenAModuleComes)
{
    m_plan.patience = shortPatience;
    m_plan.replaySpeed = Replay::slowest;
    begin();
    ASSERT_TRUE(comesTo(Stage::Alone));
    replay()->pause();
    letModuleAnswer();
    ASSERT_TRUE(comesTo(Stage::Trading));
    EXPECT_EQ(replay()->state(), Replay::State::Paused);
}

/// An order that was placed meanwhile would meet the quotes of the morning once more.
TEST_F(TradingSessionTest, IsNotBegunAgainByAPatienceThatEndsLater)
{
    m_plan.patience = shortPatience;
    m_plan.replaySpeed = Replay::fastest; // a bar takes half of the patience
    letModuleAnswer();
    begin();
    ASSERT_TRUE(comesTo(Stage::Trading));
    m_restarts = 0;
    ASSERT_TRUE(waitUntil([this] { return replay()->completed() >= 6; }));
    EXPECT_EQ(m_restarts, 0);
    EXPECT_THAT(m_stages, ElementsAre(Stage::Awaiting, Stage::Informing, Stage::Trading));
}

TEST_F(TradingSessionTest, OfAReplayWithOrdersWaitsForTheModuleButLetsOverlaysAsk)
{
    m_plan.patience = shortPatience;
    m_plan.replaySpeed = Replay::slowest;
    m_plan.playsAlone = false;
    begin();
    ASSERT_TRUE(comesTo(Stage::Alone));
    EXPECT_EQ(m_overlaysDue, 1);
    EXPECT_EQ(replay()->state(), Replay::State::Paused);
    letModuleAnswer();
    ASSERT_TRUE(comesTo(Stage::Trading));
    EXPECT_THAT(m_stages, ElementsAre(Stage::Awaiting, Stage::Alone, Stage::Informing, Stage::Trading));
    EXPECT_EQ(replay()->state(), Replay::State::Playing);
}

TEST_F(TradingSessionTest, SaysThatAReplayWaitsForAModuleThatNeverAnswers)
{
    m_plan.patience = shortPatience;
    m_plan.replaySpeed = Replay::slowest;
    m_plan.playsAlone = false;
    begin();
    int waits = 0;
    QObject::connect(m_session.get(), &TradingSession::replayWaits, m_session.get(), [&waits] { ++waits; });
    ASSERT_TRUE(comesTo(Stage::Alone));
    EXPECT_EQ(waits, 1);
}

TEST_F(TradingSessionTest, IsNotBegunAgainWhenItsUserDidNotWaitForTheModule)
{
    m_plan.patience = shortPatience;
    m_plan.replaySpeed = Replay::slowest;
    m_plan.playsAlone = false;
    begin();
    ASSERT_TRUE(comesTo(Stage::Alone));
    replay()->play();
    replay()->playTo(atTime(1000));
    m_restarts = 0;
    letModuleAnswer();
    ASSERT_TRUE(comesTo(Stage::Trading));
    EXPECT_EQ(m_restarts, 0);
    EXPECT_EQ(replay()->completed(), 31U);
}

TEST_F(TradingSessionTest, PausesAReplayWhoseTodayIsOver)
{
    begin();
    int told = 0;
    QObject::connect(m_session.get(), &TradingSession::replayOutlivedItsDay, m_session.get(),
                     [&told] { ++told; });
    ASSERT_EQ(m_session->openReplay(minutes()), QString());
    replay()->step();
    EXPECT_EQ(told, 0) << "it is today";
    replay()->close();

    replay()->open(minutes(), Trading::TradingDate::today().plusDays(-1)); // as if midnight had passed
    told = 0;
    replay()->play();
    replay()->step();
    EXPECT_EQ(told, 1);
    EXPECT_EQ(replay()->state(), Replay::State::Paused);
}

TEST_F(TradingSessionTest, HasAPractisedDayGoOnAfterMidnight)
{
    m_plan.practised = practised();
    begin();
    ASSERT_EQ(m_session->openReplay(minutes()), QString());
    replay()->playTo(atTime(1000));
    replay()->open(minutes(), Trading::TradingDate::today().plusDays(-1)); // as if midnight had passed
    replay()->playTo(atTime(1000));
    EXPECT_EQ(dayOf(replay()->day().front()), Trading::TradingDate::today());
    EXPECT_EQ(replay()->completed(), 31U);
    const MinuteBook *const shown = m_session->today()->of(replay()->security().id());
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->bars().size(), 31U);
    EXPECT_EQ(dayOf(shown->bars().front()), Trading::TradingDate::today());
}

TEST_F(TradingSessionTest, ComesBackToWhereAPractisedDayWas)
{
    m_plan.practised = practised(atTime(945));
    begin();
    ASSERT_EQ(m_session->openReplay(minutes()), QString());
    EXPECT_EQ(replay()->completed(), 16U);
    replay()->playTo(atTime(1000));
    replay()->close();
    ASSERT_EQ(m_session->openReplay(minutes()), QString());
    EXPECT_EQ(replay()->completed(), 31U);
}

TEST_F(TradingSessionTest, GoesOnWithAPractisedDayWithoutBeginningItAgainAndTellsWhichOrdersAreTooLate)
{
    m_plan.practised = practised(atTime(945));
    m_plan.replaySpeed = Replay::slowest;
    m_plan.playsOn = false;
    m_plan.orders = {{atTime(944), Direction::Buy, 100, 12.9}, {atTime(946), Direction::Buy, 100, 12.9}};
    begin();
    hearRefusals();
    letModuleAnswer();
    ASSERT_TRUE(comesTo(Stage::Trading));
    EXPECT_EQ(m_restarts, 0);
    EXPECT_EQ(replay()->completed(), 16U) << "it waits where it was";
    ASSERT_EQ(m_refusals.size(), 1) << "before another minute is played";
    EXPECT_THAT(m_refusals.front().toStdString(), ::testing::HasSubstr("09:44"));
}

TEST_F(TradingSessionTest, PlaysAPractisedDayOnToWhereItIsToBegin)
{
    m_plan.practised = practised(atTime(945));
    m_plan.replaySpeed = Replay::slowest;
    m_plan.replayTo = atTime(1000);
    letModuleAnswer();
    begin();
    ASSERT_TRUE(comesTo(Stage::Trading));
    EXPECT_EQ(replay()->completed(), 31U);
    EXPECT_EQ(m_restarts, 0);
}

TEST_F(TradingSessionTest, OrdersByTheRulesOfThePractisedDayElseByTodays)
{
    begin();
    EXPECT_EQ(m_session->dayOfRules(), Trading::TradingDate::today());
    m_plan.practised = practised();
    begin();
    EXPECT_EQ(m_session->dayOfRules(), onDay(20180108));
}

TEST_F(TradingSessionTest, OrdersNothingInAReplayForAnAccountThatDoesNotPractiseIt)
{
    letModuleAnswer();
    begin();
    ASSERT_TRUE(comesTo(Stage::Trading));
    ASSERT_EQ(m_session->openReplay(minutes()), QString());
    std::string refusal;
    QObject::connect(m_session->desk(), &OrderDesk::placed, m_session.get(),
                     [&refusal](const OrderRequest &, const DeskOutcome &outcome) {
                         refusal = outcome.text.toStdString();
                     });
    m_session->desk()->place({replay()->security(), Direction::Buy, 13, 100});
    EXPECT_TRUE(waitUntil([&refusal] { return !refusal.empty(); }));
    EXPECT_THAT(refusal, ::testing::HasSubstr("does not practise"));
}

TEST_F(TradingSessionTest, OnlyPausesAPracticeWhoseReplayIsToEnd)
{
    m_plan.practised = practised();
    begin();
    ASSERT_EQ(m_session->openReplay(minutes()), QString());
    replay()->playTo(atTime(940));
    replay()->play();
    EXPECT_EQ(m_session->standstill(), QString());
    EXPECT_THAT(m_session->endReplay().toStdString(), ::testing::HasSubstr("stands still"));
    EXPECT_EQ(replay()->state(), Replay::State::Paused);
    EXPECT_THAT(m_session->standstill().toStdString(), ::testing::HasSubstr("waits"));
    const auto price = m_session->prices()->of(replay()->security());
    ASSERT_TRUE(price);
    EXPECT_EQ(price->price, minutes().bars[10].close) << "of the minute that was played last";
    replay()->playTo(atTime(1500));
    EXPECT_THAT(m_session->standstill().toStdString(), ::testing::HasSubstr("is over"));
}

TEST_F(TradingSessionTest, EndsAReplayThatNobodyPractises)
{
    begin();
    ASSERT_EQ(m_session->openReplay(minutes()), QString());
    EXPECT_EQ(m_session->endReplay(), QString());
    EXPECT_EQ(replay()->state(), Replay::State::Closed);
    EXPECT_EQ(m_session->standstill(), QString());
}

TEST_F(TradingSessionTest, HasNoPriceInAPracticeThatCameAfterItsDay)
{
    m_plan.practised = practised();
    begin();
    const Security other = *findSecurity(m_folder.securities(), QStringLiteral("600519"));
    m_session->prices()->readAnew(other.code); // as a chart of it does
    ASSERT_EQ(m_session->openReplay(minutes()), QString());
    replay()->close();
    for (const Security &security : {minutes().security, other}) {
        m_session->prices()->of(security);
        m_session->prices()->readNow();
        const auto price = m_session->prices()->of(security);
        ASSERT_TRUE(price);
        EXPECT_LT(price->day, onDay(20180108));
    }
}

TEST_F(TradingSessionTest, PlaysNoOtherDayThanThePractisedOne)
{
    m_plan.practised = PractisedDay{QStringLiteral("000001"), onDay(20180109), {}};
    begin();
    EXPECT_THAT(m_session->openReplay(minutes()).toStdString(), ::testing::HasSubstr("2018-01-09"));
    EXPECT_EQ(replay()->state(), Replay::State::Closed);
}

TEST_F(TradingSessionTest, BeginsNoDayAgainUnderAnOrderThatWasPlacedInIt)
{
    m_module.setAnswer(QStringLiteral("EntrustPlace"), {{QStringLiteral("ordersno"), QStringLiteral("1")}});
    m_plan.practised = practised();
    letModuleAnswer();
    begin();
    ASSERT_TRUE(comesTo(Stage::Trading));
    ASSERT_EQ(m_session->openReplay(minutes()), QString());
    EXPECT_EQ(m_session->restartReplay(), QString());
    replay()->playTo(atTime(1000));
    bool isPlaced = false;
    QObject::connect(m_session->desk(), &OrderDesk::placed, m_session.get(),
                     [&isPlaced] { isPlaced = true; });
    m_session->desk()->place({replay()->security(), Direction::Buy, 13, 100});
    ASSERT_TRUE(waitUntil([&isPlaced] { return isPlaced; }));
    EXPECT_THAT(m_session->restartReplay().toStdString(), ::testing::HasSubstr("Orders were placed"));
    EXPECT_EQ(replay()->completed(), 31U);
}

TEST_F(TradingSessionTest, BeginsWithoutAReplayThatItsUserHasEnded)
{
    m_plan.replaySpeed = Replay::slowest;
    begin();
    replay()->close();
    letModuleAnswer();
    ASSERT_TRUE(comesTo(Stage::Trading));
    EXPECT_THAT(m_stages, ElementsAre(Stage::Awaiting, Stage::Trading));
}

TEST_F(TradingSessionTest, TellsWhyAnOrderOfThePlanIsRefused)
{
    m_module.setAnswer(QStringLiteral("EntrustPlace"), {{QStringLiteral("success"), false},
                                                        {QStringLiteral("msg"), QStringLiteral("no cash")}});
    m_plan.replaySpeed = Replay::slowest;
    m_plan.practised = practised();
    m_plan.orders = {{atTime(930), Direction::Buy, 100, 12.9}};
    letModuleAnswer();
    begin();
    QString reason;
    QObject::connect(m_session.get(), &TradingSession::orderRefused, m_session.get(),
                     [&reason](const QString &text) { reason = text; });
    EXPECT_TRUE(waitUntil([&reason] { return reason == QLatin1String("no cash"); }));
}

TEST_F(TradingSessionTest, SendsNoOrderOfItsOwnAccountToAModuleThatDoesNotSayWhichOneItServes)
{
    m_plan.ledger = QStringLiteral("/home/me/account.db");
    letModuleAnswer(); // it announces nothing
    begin();
    ASSERT_TRUE(waitUntil([this] { return m_session->module()->isAnswering(); }));
    std::string refusal;
    QObject::connect(m_session->desk(), &OrderDesk::placed, m_session.get(),
                     [&refusal](const OrderRequest &, const DeskOutcome &outcome) {
                         refusal =
                             outcome.kind == DeskOutcome::Kind::Refused ? outcome.text.toStdString() : "";
                     });

    OrderRequest order;
    order.security = minutes().security;
    order.price = 10;
    order.quantity = 100;
    m_session->desk()->place(order);

    ASSERT_TRUE(waitUntil([&refusal] { return !refusal.empty(); }));
    EXPECT_EQ(refusal, "the trading module on this bus does not say which account it serves");
}

TEST_F(TradingSessionTest, TellsWhatCombinedOverlaysHear)
{
    letModuleAnswer();
    begin();
    SharedNews heard;
    QObject::connect(m_session.get(), &TradingSession::heard, m_session.get(),
                     [&heard](const SharedNews &news) { heard = news; });
    ASSERT_TRUE(comesTo(Stage::Trading));
    m_module.notify(QStringLiteral("600519"));
    ASSERT_TRUE(waitUntil([&heard] { return heard.kind == SharedNews::Data; }));
    EXPECT_EQ(heard.code, QStringLiteral("600519"));
}

TEST_F(TradingSessionTest, ReplaysNothingButMinutes)
{
    begin();
    const ChartData days = m_folder.load(QStringLiteral("000001"), ChartPeriod::Day).value();
    EXPECT_THAT(m_session->openReplay(days).toStdString(), ::testing::HasSubstr("minutes"));
    EXPECT_EQ(replay()->state(), Replay::State::Closed);
}

} // namespace
} // namespace Terminal
