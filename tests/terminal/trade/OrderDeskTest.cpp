// The terminal's counter at the trading module, over a real broker.
#include "terminal/trade/OrderDesk.h"
#include "tests/support/TestBroker.h"
#include "tests/terminal/support/ModuleAnswers.h"
#include "tests/terminal/support/ScriptedModule.h"
#include "tests/terminal/support/SomeSecurities.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>

namespace Terminal {
namespace {

using namespace std::chrono_literals;

using Kind = DeskOutcome::Kind;

class OrderDeskTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_module.setAnswer(QStringLiteral("EntrustTodayTrade"), withData(QJsonArray()));
        m_module.setAnswer(QStringLiteral("AccountInfo"), withData(QJsonObject()));
        QObject::connect(
            &m_desk, &OrderDesk::placed, &m_desk,
            [this](const OrderRequest &, const DeskOutcome &outcome) { m_placed.push_back(outcome); });
        QObject::connect(
            &m_desk, &OrderDesk::cancelAnswered, &m_desk,
            [this](const OrderRecord &, const DeskOutcome &outcome) { m_cancelled.push_back(outcome); });
        m_desk.show(moutai, std::nullopt);
        ASSERT_TRUE(waitUntil([this] { return m_module.isReady(); }));
        m_desk.start(m_broker.address());
        m_desk.watch();
        ASSERT_TRUE(waitUntil([this] { return m_desk.isAnswering() && m_desk.account(); }));
    }

    size_t countOf(const char *command) { return m_module.asked(QLatin1String(command)).size(); }

    /// Long enough to see that nothing more is asked: questions arrive in order, so the answer to a
    /// later one has passed them all.
    void letPass()
    {
        m_module.setAnswer(QStringLiteral("EntrustPlace"), withData(QJsonObject()));
        const size_t before = m_placed.size();
        m_desk.place({moutai, Direction::Buy, 1, 100});
        ASSERT_TRUE(waitUntil([&] { return m_placed.size() > before; }));
    }

    TestBroker m_broker;
    ScriptedModule m_module{m_broker.address()};
    OrderDesk m_desk;
    std::vector<DeskOutcome> m_placed;
    std::vector<DeskOutcome> m_cancelled;
};

TEST_F(OrderDeskTest, AsksForNothingBeforeItIsToWatch)
{
    OrderDesk other;
    std::vector<DeskOutcome> placed;
    QObject::connect(
        &other, &OrderDesk::placed, &other,
        [&placed](const OrderRequest &, const DeskOutcome &outcome) { placed.push_back(outcome); });
    m_module.setAnswer(QStringLiteral("EntrustPlace"), withData(QJsonObject()));
    other.start(m_broker.address());
    ASSERT_TRUE(waitUntil([&other] { return other.endPoint()->isConnected(); }));
    m_module.notify(QStringLiteral("600519"));
    other.place({moutai, Direction::Buy, 1, 100});
    ASSERT_TRUE(waitUntil([&placed] { return !placed.empty(); }));
    letPass();
    EXPECT_FALSE(other.account());

    other.watch();
    EXPECT_TRUE(waitUntil([&other] { return other.account().has_value(); }));
}

TEST_F(OrderDeskTest, TellsTheNumberOfAnAcceptedOrder)
{
    m_module.setAnswer(QStringLiteral("EntrustPlace"),
                       withData(QJsonObject{{QStringLiteral("ordersno"), QStringLiteral("17")}}));
    m_desk.place({moutai, Direction::Sell, 1700.1, 300});
    ASSERT_TRUE(waitUntil([this] { return !m_placed.empty(); }));
    EXPECT_EQ(m_placed.front().kind, Kind::Accepted);
    EXPECT_EQ(m_placed.front().text, QStringLiteral("17"));
}

TEST_F(OrderDeskTest, SendsPricesWithTwoDecimalsAndTheMarketAsLetters)
{
    m_desk.place({moutai, Direction::Sell, 1700.1, 300});
    m_desk.place({{QStringLiteral("000001"), Market::Shenzhen, {}}, Direction::Buy, 0.1 + 0.2, 100});
    ASSERT_TRUE(m_module.wasAsked("EntrustPlace", 2));
    const auto asked = m_module.asked(QStringLiteral("EntrustPlace"));
    const auto text = [&asked](size_t i, const char *key) {
        return asked[i].value(QLatin1String(key)).toString().toStdString();
    };
    EXPECT_EQ(text(0, "orderprice"), "1700.10");
    EXPECT_EQ(text(0, "orderqty"), "300");
    EXPECT_EQ(text(0, "bsflag2"), "0S");
    EXPECT_EQ(text(0, "market"), "SH");
    EXPECT_EQ(text(1, "orderprice"), "0.30");
    EXPECT_EQ(text(1, "bsflag2"), "0B");
    EXPECT_EQ(text(1, "market"), "SZ");
    EXPECT_NE(text(0, "objectId"), text(1, "objectId"));
}

TEST_F(OrderDeskTest, TellsWhyAnOrderIsRefused)
{
    m_module.setAnswer(QStringLiteral("EntrustPlace"), refusedWith("not enough cash"));
    m_desk.place({moutai, Direction::Buy, 1700, 100});
    ASSERT_TRUE(waitUntil([this] { return !m_placed.empty(); }));
    EXPECT_EQ(m_placed.front().kind, Kind::Refused);
    EXPECT_EQ(m_placed.front().text, QStringLiteral("not enough cash"));
}

TEST_F(OrderDeskTest, TellsThatNoAnswerCameAndTellsALateAnswer)
{
    m_desk.setTimeout(50ms);
    m_desk.place({moutai, Direction::Buy, 1700, 100});
    ASSERT_TRUE(waitUntil([this] { return m_placed.size() == 1; }));
    EXPECT_EQ(m_placed.front().kind, Kind::NoAnswer);
    EXPECT_FALSE(m_placed.front().isLate);

    const auto asked = m_module.asked(QStringLiteral("EntrustPlace"));
    ASSERT_EQ(asked.size(), 1U);
    m_module.answer(asked.front(), withData(QJsonObject{{QStringLiteral("ordersno"), QStringLiteral("18")}}));
    ASSERT_TRUE(waitUntil([this] { return m_placed.size() == 2; }));
    EXPECT_EQ(m_placed.back().kind, Kind::Accepted);
    EXPECT_EQ(m_placed.back().text, QStringLiteral("18"));
    EXPECT_TRUE(m_placed.back().isLate);
}

/// A desk whose module says that it knows the terminal's own numbers of orders.
class OrderDeskOfModuleWithNumbers : public OrderDeskTest
{
protected:
    void SetUp() override
    {
        OrderDeskTest::SetUp();
        m_desk.setModule([this] { return m_served; });
        m_desk.setTimeout(100ms);
    }

    DeskModule m_served{true, QStringLiteral("desk/account.db"), {}};
};

TEST_F(OrderDeskOfModuleWithNumbers, AsksAgainForTheSameOrderUntilItIsAnswered)
{
    const QString number = m_desk.place({moutai, Direction::Buy, 1700, 100});
    ASSERT_TRUE(m_module.wasAsked("EntrustPlace", 2));
    const auto asked = m_module.asked(QStringLiteral("EntrustPlace"));
    EXPECT_EQ(asked[0], asked[1]) << "the very same question";
    EXPECT_EQ(asked[0].value(QLatin1String("clientno")).toString(), number);
    m_module.answer(asked[1], withData(QJsonObject{{QStringLiteral("ordersno"), QStringLiteral("19")}}));
    ASSERT_TRUE(waitUntil([this] { return !m_placed.empty(); }));
    EXPECT_EQ(m_placed.front().kind, Kind::Accepted);
    EXPECT_FALSE(m_placed.front().isLate);
    m_module.answer(asked[0], withData(QJsonObject{{QStringLiteral("ordersno"), QStringLiteral("19")}}));
    letPass();
    EXPECT_EQ(m_placed.size(), 2U) << "the other answer tells of the same order";
}

TEST_F(OrderDeskOfModuleWithNumbers, AsksAFewTimesAndThenSaysThatNoAnswerCame)
{
    int repeats = 0;
    QObject::connect(&m_desk, &OrderDesk::askedAgain, &m_desk,
                     [&repeats](const OrderRequest &) { ++repeats; });
    m_desk.place({moutai, Direction::Buy, 1700, 100});
    ASSERT_TRUE(waitUntil([this] { return !m_placed.empty(); }));
    EXPECT_EQ(m_placed.front().kind, Kind::NoAnswer);
    letPass();
    EXPECT_EQ(countOf("EntrustPlace"), static_cast<size_t>(OpenWishes::mostTries) + 1)
        << "the last one is ours";
    EXPECT_EQ(repeats, OpenWishes::mostTries - 1);
}

TEST_F(OrderDeskOfModuleWithNumbers, AsksTheModuleThatFollowsAtOnceAndTellsTheOutcome)
{
    m_desk.setTimeout(20s); // no try ends by itself
    m_desk.place({moutai, Direction::Buy, 1700, 100});
    ASSERT_TRUE(m_module.wasAsked("EntrustPlace", 1)); // it stood still and was followed

    m_desk.askForOutcomes();

    ASSERT_TRUE(m_module.wasAsked("EntrustPlace", 2));
    const auto asked = m_module.asked(QStringLiteral("EntrustPlace"));
    EXPECT_EQ(asked[0], asked[1]);
    m_module.answer(asked[1], withData(QJsonObject{{QStringLiteral("ordersno"), QStringLiteral("20")}}));
    ASSERT_TRUE(waitUntil([this] { return !m_placed.empty(); }));
    EXPECT_EQ(m_placed.front().kind, Kind::Accepted);
}

TEST_F(OrderDeskOfModuleWithNumbers, WaitsWhileNoModuleIsThereAndGoesOnWithTheNextOne)
{
    m_desk.place({moutai, Direction::Buy, 1700, 100});
    ASSERT_TRUE(m_module.wasAsked("EntrustPlace", 1));
    m_served.knowsClientNumbers = false;
    EXPECT_FALSE(waitUntil([this] { return !m_placed.empty(); }, 350ms)) << "its outcome is not known yet";
    EXPECT_EQ(m_module.asked(QStringLiteral("EntrustPlace")).size(), 1U);

    m_served.knowsClientNumbers = true;

    EXPECT_TRUE(m_module.wasAsked("EntrustPlace", 2));
}

TEST_F(OrderDeskOfModuleWithNumbers, AsksNoModuleOfAnotherAccountForAnOrderAgain)
{
    m_desk.place({moutai, Direction::Buy, 1700, 100});
    m_served.account = QStringLiteral("desk/other.db");
    m_desk.askForOutcomes();
    ASSERT_TRUE(waitUntil([this] { return !m_placed.empty(); }));
    EXPECT_EQ(m_placed.front().kind, Kind::NoAnswer);
    EXPECT_EQ(countOf("EntrustPlace"), 1U);
}

TEST_F(OrderDeskOfModuleWithNumbers, AsksForNothingAgainOnceTheUserWasSentToLook)
{
    m_desk.place({moutai, Direction::Buy, 1700, 100});
    ASSERT_TRUE(waitUntil([this] { return !m_placed.empty(); }));
    const size_t before = m_module.asked(QStringLiteral("EntrustPlace")).size();

    m_desk.askForOutcomes();

    letPass();
    EXPECT_EQ(countOf("EntrustPlace"), before + 1) << "the last one is ours";
}

TEST_F(OrderDeskOfModuleWithNumbers, SendsNothingToAModuleThatItObjectsTo)
{
    m_served.objection = QStringLiteral("another account");
    m_desk.place({moutai, Direction::Buy, 1700, 100});
    ASSERT_TRUE(waitUntil([this] { return !m_placed.empty(); }));
    EXPECT_EQ(m_placed.front().kind, Kind::Refused);
    EXPECT_EQ(m_placed.front().text, QStringLiteral("another account"));
    m_served.objection.clear();
    letPass();
    EXPECT_EQ(countOf("EntrustPlace"), 1U) << "the last one is ours";
}

TEST_F(OrderDeskOfModuleWithNumbers, GivesEveryPlacementANumberOfItsOwn)
{
    EXPECT_NE(m_desk.place({moutai, Direction::Buy, 1, 100}), m_desk.place({moutai, Direction::Buy, 1, 100}));
}

TEST_F(OrderDeskOfModuleWithNumbers, AsksNoOtherModuleForAnOrderAgain)
{
    m_desk.place({moutai, Direction::Buy, 1700, 100});
    m_served.knowsClientNumbers = false;
    ASSERT_TRUE(waitUntil([this] { return !m_placed.empty(); }));
    EXPECT_EQ(m_placed.front().kind, Kind::NoAnswer);
    EXPECT_EQ(countOf("EntrustPlace"), 1U);
}

TEST_F(OrderDeskOfModuleWithNumbers, AsksNotAgainForAnOrderThatAModuleWithoutNumbersMayHaveTaken)
{
    m_served.knowsClientNumbers = false;
    m_desk.place({moutai, Direction::Buy, 1700, 100});
    m_served.knowsClientNumbers = true;
    ASSERT_TRUE(waitUntil([this] { return !m_placed.empty(); }));
    EXPECT_EQ(countOf("EntrustPlace"), 1U);
}

// The module that takes it may have come a moment ago, and the bus may bring it twice.
TEST_F(OrderDeskOfModuleWithNumbers, NumbersAnOrderAlsoBeforeItKnowsWhoTakesIt)
{
    m_served = {};
    const QString number = m_desk.place({moutai, Direction::Buy, 1700, 100});
    ASSERT_TRUE(m_module.wasAsked("EntrustPlace", 1));
    EXPECT_EQ(m_module.asked(QStringLiteral("EntrustPlace")).front().value(QLatin1String("clientno")),
              number);
}

TEST_F(OrderDeskOfModuleWithNumbers, AsksForNoCancellationAgain)
{
    OrderRecord order;
    order.security = moutai;
    order.number = QStringLiteral("17");
    order.day = Trading::TradingDate::of(2024, 1, 2);
    m_desk.cancel(order);
    ASSERT_TRUE(waitUntil([this] { return !m_cancelled.empty(); }));
    EXPECT_EQ(countOf("EntrustCancel"), 1U);
}

TEST_F(OrderDeskTest, TakesAnswersInAnyOrder)
{
    m_desk.place({moutai, Direction::Buy, 1, 100});
    m_desk.place({moutai, Direction::Buy, 2, 100});
    ASSERT_TRUE(m_module.wasAsked("EntrustPlace", 2));
    const auto asked = m_module.asked(QStringLiteral("EntrustPlace"));
    std::vector<double> prices;
    QObject::connect(
        &m_desk, &OrderDesk::placed, &m_desk,
        [&prices](const OrderRequest &order, const DeskOutcome &) { prices.push_back(order.price); });
    m_module.answer(asked[1], withData(QJsonObject()));
    m_module.answer(asked[0], refusedWith("no"));
    ASSERT_TRUE(waitUntil([&prices] { return prices.size() == 2; }));
    EXPECT_THAT(prices, ::testing::ElementsAre(2, 1));
    EXPECT_EQ(m_placed[0].kind, Kind::Accepted);
    EXPECT_EQ(m_placed[1].kind, Kind::Refused);
}

TEST_F(OrderDeskTest, TellsThatNothingWasSentWithoutABus)
{
    m_broker.kill();
    ASSERT_TRUE(waitUntil([this] { return !m_desk.endPoint()->isConnected(); }));
    QElapsedTimer clock;
    clock.start();
    m_desk.place({moutai, Direction::Buy, 1700, 100});
    EXPECT_TRUE(m_placed.empty()); // told from the event loop, not from within the call
    ASSERT_TRUE(waitUntil([this] { return !m_placed.empty(); }));
    EXPECT_EQ(m_placed.front().kind, Kind::NotSent);
    EXPECT_LT(clock.elapsed(), 2000);
}

TEST_F(OrderDeskTest, KnowsWhetherTheModuleAnswers)
{
    m_desk.setTimeout(300ms);
    m_module.setSilent(QStringLiteral("AccountInfo"));
    m_desk.refresh();
    ASSERT_TRUE(waitUntil([this] { return !m_desk.isAnswering(); }));
    m_module.setAnswer(QStringLiteral("AccountInfo"), withData(QJsonObject()));
    EXPECT_TRUE(waitUntil([this] { return m_desk.isAnswering(); })) << "it asks again by itself";
}

TEST_F(OrderDeskTest, MakesAListOfAnswersThatAreAlwaysLate)
{
    m_module.setSilent(QStringLiteral("EntrustTodayTrade"));
    m_desk.setTimeout(100ms);
    const size_t before = countOf("EntrustTodayTrade");
    m_desk.askAnew();
    ASSERT_TRUE(m_module.wasAsked("EntrustTodayTrade", before + 1));
    ASSERT_TRUE(waitUntil([this] { return !m_desk.isAnswering(); }));
    m_desk.refresh(); // the first one is given up
    ASSERT_TRUE(m_module.wasAsked("EntrustTodayTrade", before + 2));
    const auto asked = m_module.asked(QStringLiteral("EntrustTodayTrade"));
    m_module.answer(asked[before], withData(QJsonArray{orderRow("17", "2")}));
    ASSERT_TRUE(waitUntil([this] { return m_desk.orders().size() == 1; }));
    EXPECT_TRUE(m_desk.isAnswering());
}

TEST_F(OrderDeskTest, TakesNoAnswerThatIsOlderThanTheOneItKnows)
{
    m_module.setSilent(QStringLiteral("EntrustTodayTrade"));
    m_desk.setTimeout(100ms);
    const size_t before = countOf("EntrustTodayTrade");
    m_desk.askAnew();
    ASSERT_TRUE(waitUntil([this] { return !m_desk.isAnswering(); }));
    m_desk.setTimeout(1min);
    m_desk.refresh();
    ASSERT_TRUE(m_module.wasAsked("EntrustTodayTrade", before + 2));
    const auto asked = m_module.asked(QStringLiteral("EntrustTodayTrade"));
    m_module.answer(asked[before + 1], withData(QJsonArray{orderRow("17", "2"), orderRow("18", "2")}));
    ASSERT_TRUE(waitUntil([this] { return m_desk.orders().size() == 2; }));
    m_module.answer(asked[before], withData(QJsonArray{orderRow("17", "2")}));
    letPass();
    EXPECT_EQ(m_desk.orders().size(), 2U);
}

TEST_F(OrderDeskTest, TakesNoLateAnswerForTheOrdersOfAnotherSecurity)
{
    m_module.setSilent(QStringLiteral("EntrustTodayTrade"));
    m_desk.setTimeout(100ms);
    m_desk.askAnew();
    ASSERT_TRUE(waitUntil([this] { return !m_desk.isAnswering(); }));
    const QJsonObject asked = m_module.asked(QStringLiteral("EntrustTodayTrade")).back();
    m_desk.show({QStringLiteral("000001"), Market::Shenzhen, {}}, std::nullopt);
    m_module.answer(asked, withData(QJsonArray{orderRow("17", "2")}));
    letPass();
    EXPECT_TRUE(m_desk.orders().empty());
}

TEST_F(OrderDeskTest, ComesBackWithTheBus)
{
    m_broker.kill();
    ASSERT_TRUE(waitUntil([this] { return !m_desk.isAnswering(); }));
    m_broker.start();
    EXPECT_TRUE(waitUntil([this] { return m_desk.isAnswering(); }));
}

TEST_F(OrderDeskTest, IsUpToDateWhenAllIsAnswered)
{
    ASSERT_TRUE(waitUntil([this] { return m_desk.isUpToDate(); }));
    m_module.setSilent(QStringLiteral("AccountInfo"));
    const size_t before = countOf("AccountInfo");
    m_desk.refresh();
    ASSERT_TRUE(waitUntil([&] { return countOf("AccountInfo") > before; }));
    EXPECT_FALSE(m_desk.isUpToDate());
    m_module.answer(m_module.asked(QStringLiteral("AccountInfo")).back(), withData(QJsonObject()));
    EXPECT_TRUE(waitUntil([this] { return m_desk.isUpToDate(); }));
}

TEST_F(OrderDeskTest, AsksAnewWhileAQuestionIsOpenThatNobodyHeard)
{
    m_desk.setTimeout(1min);
    m_module.setSilent(QStringLiteral("EntrustTodayTrade"));
    const size_t before = countOf("EntrustTodayTrade");
    m_desk.refresh();
    ASSERT_TRUE(m_module.wasAsked("EntrustTodayTrade", before + 1));
    m_desk.refresh();
    m_desk.askAnew();
    EXPECT_TRUE(m_module.wasAsked("EntrustTodayTrade", before + 2));
}

TEST_F(OrderDeskTest, CancelsByDayAndNumber)
{
    m_module.setAnswer(QStringLiteral("EntrustCancel"),
                       withData(QJsonArray{QJsonObject{{QStringLiteral("msgok "), QStringLiteral("done")}}}));
    OrderRecord order;
    order.security = moutai;
    order.number = QStringLiteral("17");
    order.day = Trading::TradingDate::of(2024, 1, 2);
    m_desk.cancel(order);
    ASSERT_TRUE(waitUntil([this] { return !m_cancelled.empty(); }));
    EXPECT_EQ(m_cancelled.front().kind, Kind::Accepted);
    EXPECT_EQ(m_cancelled.front().text, QStringLiteral("done"));
    const QJsonObject asked = m_module.asked(QStringLiteral("EntrustCancel")).front();
    EXPECT_EQ(asked.value(QLatin1String("ordersno")).toString(), QStringLiteral("17"));
    EXPECT_EQ(asked.value(QLatin1String("orderdate")).toString(), QStringLiteral("20240102"));
}

TEST_F(OrderDeskTest, ReadsTheOrdersOfTheShownSecurity)
{
    m_module.setAnswer(QStringLiteral("EntrustTodayTrade"), withData(QJsonArray{orderRow("17", "7")}));
    m_desk.refresh();
    ASSERT_TRUE(waitUntil([this] { return !m_desk.orders().empty(); }));
    const OrderRecord &order = m_desk.orders().front();
    EXPECT_EQ(order.side, Direction::Sell);
    EXPECT_EQ(order.time, Trading::ClockTime::of(9, 31, 50, 2));
    EXPECT_EQ(order.number, QStringLiteral("17"));
    EXPECT_DOUBLE_EQ(order.price, 1700.5);
    EXPECT_EQ(order.quantity, 300);
    EXPECT_EQ(order.dealt, 200);
    EXPECT_DOUBLE_EQ(order.averagePrice().value(), 1700.51);
    EXPECT_TRUE(isCancellable(order));
}

TEST_F(OrderDeskTest, ReadsTheAccount)
{
    const QJsonObject held{{QStringLiteral("stkcode"), QStringLiteral("000001")},
                           {QStringLiteral("stkname"), QStringLiteral("PA")},
                           {QStringLiteral("market"), QStringLiteral("2")},
                           {QStringLiteral("qty"), QStringLiteral("500")},
                           {QStringLiteral("sellable"), QStringLiteral("300")},
                           {QStringLiteral("costprice"), QStringLiteral("12.345")}};
    m_module.setAnswer(QStringLiteral("AccountInfo"),
                       withData(QJsonObject{{QStringLiteral("cash"), QStringLiteral("1000.50")},
                                            {QStringLiteral("available"), QStringLiteral("900.25")},
                                            {QStringLiteral("positions"), QJsonArray{held}}}));
    m_desk.refresh();
    ASSERT_TRUE(waitUntil([this] { return m_desk.account() && m_desk.account()->cash > 0; }));
    EXPECT_DOUBLE_EQ(m_desk.account()->available, 900.25);
    const Position *const position = m_desk.account()->find({QStringLiteral("000001"), Market::Shenzhen, {}});
    ASSERT_NE(position, nullptr);
    EXPECT_EQ(position->quantity, 500);
    EXPECT_EQ(position->sellable, 300);
    EXPECT_DOUBLE_EQ(position->cost, 12.345);
    EXPECT_EQ(m_desk.account()->find(moutai), nullptr);
}

TEST_F(OrderDeskTest, AsksForTheOrdersOfAPastDayByANumber)
{
    m_module.setAnswer(QStringLiteral("EntrustHistoryTrade"), withData(QJsonArray{orderRow("3", "8")}));
    m_desk.show(moutai, Trading::TradingDate::of(2024, 1, 2));
    ASSERT_TRUE(waitUntil([this] { return m_desk.orders().size() == 1; }));
    EXPECT_EQ(
        m_module.asked(QStringLiteral("EntrustHistoryTrade")).front().value(QLatin1String("date")).toInt(),
        20240102);
}

TEST_F(OrderDeskTest, ForgetsTheOrdersOfAnotherSecurity)
{
    m_module.setAnswer(QStringLiteral("EntrustTodayTrade"), withData(QJsonArray{orderRow("17", "2")}));
    m_desk.refresh();
    ASSERT_TRUE(waitUntil([this] { return !m_desk.orders().empty(); }));
    m_desk.show({QStringLiteral("000001"), Market::Shenzhen, {}}, std::nullopt);
    EXPECT_TRUE(m_desk.orders().empty());
}

TEST_F(OrderDeskTest, AsksAgainAfterANotification)
{
    const size_t orders = countOf("EntrustTodayTrade");
    const size_t accounts = countOf("AccountInfo");
    m_module.notify(QStringLiteral("600519"));
    ASSERT_TRUE(waitUntil(
        [&] { return countOf("EntrustTodayTrade") > orders && countOf("AccountInfo") > accounts; }));
}

TEST_F(OrderDeskTest, HasOneQuestionOfAKindOpenHoweverManyNotificationsCome)
{
    m_module.setSilent(QStringLiteral("EntrustTodayTrade"));
    const size_t before = countOf("EntrustTodayTrade");
    for (int i = 0; i < 20; ++i) {
        m_module.notify(QStringLiteral("600519"));
    }
    ASSERT_TRUE(m_module.wasAsked("EntrustTodayTrade", before + 1));
    letPass();
    EXPECT_EQ(countOf("EntrustTodayTrade"), before + 1);
    m_module.answer(m_module.asked(QStringLiteral("EntrustTodayTrade")).back(), withData(QJsonArray()));
    EXPECT_TRUE(m_module.wasAsked("EntrustTodayTrade", before + 2))
        << "what came meanwhile is asked once more";
}

TEST_F(OrderDeskTest, KnowsTheWorkingOrdersOfAllSecuritiesOfAModuleThatTellsThem)
{
    EXPECT_FALSE(m_desk.workingOrders());
    EXPECT_EQ(countOf("OpenOrders"), 0U) << "it is no command for every module";
    m_module.setAnswer(QStringLiteral("OpenOrders"),
                       withData(QJsonArray{orderRow("3", "2"), orderRow("4", "7")}));
    bool tells = true;
    m_desk.setModule([&tells] {
        DeskModule module;
        module.tellsOpenOrders = tells;
        return module;
    });
    m_desk.refresh();
    ASSERT_TRUE(waitUntil([this] { return m_desk.workingOrders() && m_desk.workingOrders()->size() == 2; }));

    tells = false;
    m_desk.refresh();
    EXPECT_FALSE(m_desk.workingOrders()) << "nobody tells whether they are still there";
}

TEST_F(OrderDeskTest, WaitsForNoAnswerFromBeforeTheModuleThatTellsWorkingOrdersWasAway)
{
    m_desk.setTimeout(20s);
    m_module.setSilent(QStringLiteral("OpenOrders"));
    DeskModule module;
    m_desk.setModule([&module] { return module; });
    module.tellsOpenOrders = true;
    m_desk.refresh();
    ASSERT_TRUE(m_module.wasAsked("OpenOrders", 1)); // where nobody hears it
    module.tellsOpenOrders = false;
    m_desk.askAnew();

    module.tellsOpenOrders = true;
    m_desk.refresh();

    letPass();
    EXPECT_EQ(countOf("OpenOrders"), 2U);
}

TEST_F(OrderDeskTest, TellsTheModuleInWhichLanguageItIsToSpeak)
{
    m_desk.setLanguage(QStringLiteral("en"));
    m_desk.refresh();
    ASSERT_TRUE(waitUntil([this] {
        return m_module.asked(QStringLiteral("AccountInfo")).back().value(QLatin1String("lang")) ==
               QStringLiteral("en");
    }));
    letPass();
    EXPECT_EQ(m_module.asked(QStringLiteral("EntrustPlace")).back().value(QLatin1String("lang")),
              QStringLiteral("en"));
    EXPECT_FALSE(m_module.asked(QStringLiteral("EntrustTodayTrade")).back().contains(QLatin1String("lang")))
        << "what every trading module is asked stays as it is";
}

} // namespace
} // namespace Terminal
