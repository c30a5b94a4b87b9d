#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/entrustpoint/EntrustPointCancelTest.h"

#include <QElapsedTimer>
#include <QUuid>

#include <climits>

using namespace std::chrono_literals;

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace TradeChart;

namespace {

class EntrustPointCancelling : public EntrustPointCancelTest
{
};

TEST_F(EntrustPointCancelling, AsksTheUserAndThenTheTradingModule)
{
    choose(1);
    EXPECT_THAT(axis.questions, ElementsAre("撤单?\n" + axis.popups[0][1].toUtf8()));
    ASSERT_THAT(bus().sent, SizeIs(1));
    EXPECT_EQ(bus().sent[0].channel, "Global");
    EXPECT_EQ(bus().sent[0].topic, "TradeQuery");
    const QByteArray sent = bus().sent[0].payload;
    EXPECT_EQ(sent, R"({"cmd":"EntrustCancel","market":"SH","objectId":")" + objectId().toUtf8() +
                        R"(","orderdate":")" + QByteArray::number(today) +
                        R"(","ordersno":"2","screenId":"screen-1","stkcode":"600536"})");
}

TEST_F(EntrustPointCancelling, SendsNothingUnlessTheUserConfirms)
{
    axis.onConfirm = [] { return false; };
    choose(1);
    EXPECT_THAT(axis.questions, SizeIs(1));
    EXPECT_THAT(questions(), IsEmpty());
}

struct StatusOffer
{
    const char *name;
    const char *status;
    bool isOffered;
};

class EntrustPointCancellingOffer : public EntrustPointCancelTest,
                                    public ::testing::WithParamInterface<StatusOffer>
{
};

TEST_P(EntrustPointCancellingOffer, OfACancellationDependsOnTheStatus)
{
    hearOrders({SentOrder{"0B", GetParam().status}});
    choose(0);
    EXPECT_EQ(axis.questions.size(), GetParam().isOffered ? 1U : 0U);
    EXPECT_EQ(countOf("EntrustCancel"), GetParam().isOffered ? 1 : 0);
    EXPECT_THAT(axis.popups, SizeIs(1)) << "it is listed in any case";
}

INSTANTIATE_TEST_SUITE_P(
    Statuses, EntrustPointCancellingOffer,
    ::testing::Values(StatusOffer{"NotReported", "0", false}, StatusOffer{"Quoting", "1", true},
                      StatusOffer{"Quoted", "2", true}, StatusOffer{"QuotedWaitingForCancel", "3", false},
                      StatusOffer{"PartDealtWaitingForCancel", "4", false},
                      StatusOffer{"PartCancelled", "5", false}, StatusOffer{"Cancelled", "6", false},
                      StatusOffer{"PartDealt", "7", true}, StatusOffer{"Dealt", "8", false},
                      StatusOffer{"Abolished", "9", false}, StatusOffer{"WaitingToQuote", "A", true},
                      StatusOffer{"QuotingB", "B", false}, StatusOffer{"Confirmed", "G", false},
                      StatusOffer{"SmallLetter", "a", false}, StatusOffer{"WithABlank", "2 ", false},
                      StatusOffer{"Unknown", "Z", false}),
    ByName());

TEST_F(EntrustPointCancelling, LogsAChoiceThatIsNotInTheList)
{
    const LogCapture log;
    for (const int row : {-1, -7, 2, 1000, INT_MAX, INT_MIN}) {
        choose(row);
    }
    EXPECT_THAT(log.lines(QtDebugMsg),
                ElementsAre(QStringLiteral("Unknown select: -1 , select size: 2"),
                            QStringLiteral("Unknown select: -7 , select size: 2"),
                            QStringLiteral("Unknown select: 2 , select size: 2"),
                            QStringLiteral("Unknown select: 1000 , select size: 2"),
                            QStringLiteral("Unknown select: 2147483647 , select size: 2"),
                            QStringLiteral("Unknown select: -2147483648 , select size: 2")));
    EXPECT_THAT(axis.questions, IsEmpty());
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(EntrustPointCancelling, LeavesTheOrdersAsTheyAre)
{
    const auto markers = drawn();
    axis.updated.clear();
    choose(1);
    EXPECT_EQ(drawn(), markers);
    EXPECT_THAT(axis.updated, IsEmpty());
    EXPECT_THAT(questions(), SizeIs(1)) << "no question for the orders";
}

TEST_F(EntrustPointCancelling, NeitherWaitsNorAsksForTheOrdersLater)
{
    QElapsedTimer clock;
    clock.start();
    choose(1);
    hearCancelled({{QStringLiteral("success"), true}});
    EXPECT_LT(clock.elapsed(), 900);
    // longer than the second after which a notification would be asked about
    EXPECT_FALSE(waitUntil([] { return todayQuestions() > 0; }, 1500ms));
}

TEST_F(EntrustPointCancelling, OffersTheLastOfAVeryLongList)
{
    std::vector<QJsonObject> rows;
    std::vector<std::string> numbers;
    for (int number = 1; number <= 250; ++number) {
        numbers.push_back(std::to_string(number));
        rows.push_back(with(SentOrder(), "ordersno", QString::number(number)));
    }
    hearOrders(rows);
    EXPECT_EQ(listAt(0, yOfTen()), numbers);
    choose(249);
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("ordersno":"250")"));
}

class EntrustPointCancellingByMode : public EntrustPointCancelTest, public ::testing::WithParamInterface<int>
{
};

TEST_P(EntrustPointCancellingByMode, OffersAnOrderOfAnyDayOnAnyChart)
{
    axis.mode = GetParam();
    hearOrders({SentOrder{"0B", "2", "10", "9310000", "20240102", "3"}});
    EXPECT_EQ(overlay->hitTest(0, yOfTen()), 0);
    choose(0);
    EXPECT_THAT(axis.questions, SizeIs(1));
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("orderdate":"20240102","ordersno":"3")"));
    hearCancelled({{QStringLiteral("msg"), QStringLiteral("不可撤")}});
    EXPECT_THAT(axis.messages, ElementsAre("不可撤"));
}

INSTANTIATE_TEST_SUITE_P(ChartModes, EntrustPointCancellingByMode, ::testing::Values(0, 1, 2, 3));

TEST_F(EntrustPointCancelling, IsSilentWhenTheBusRefusesIt)
{
    const LogCapture log;
    bus().takesMessages = false;
    choose(1);
    EXPECT_THAT(log.all(), IsEmpty());
    EXPECT_THAT(axis.messages, IsEmpty());
}

TEST_F(EntrustPointCancelling, RefersToWhatWasListedWhenAnAnswerComesMeanwhile)
{
    axis.onPopup = [] {
        hearOrders({SentOrder{"0S", "2", "10", "9310000", "20240102", "99"}});
        return 1;
    };
    axis.onConfirm = [] {
        hearOrders({SentOrder{"0S", "8", "10", "9310000", "20240102", "98"}});
        return true;
    };
    overlay->handleMousePress(0, yOfTen());
    EXPECT_TRUE(axis.questions[0].contains("编号:2\n"));
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("ordersno":"2")"));
}

TEST_F(EntrustPointCancelling, ListsAnewForAClickWhileAListIsOpen)
{
    axis.onPopup = [this] {
        if (axis.popups.size() == 2) {
            return 0; // the order that is dealt
        }
        overlay->handleMousePress(0, yOfTen());
        return 1;
    };
    overlay->handleMousePress(0, yOfTen());
    EXPECT_THAT(axis.popups, SizeIs(2));
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("ordersno":"2")"));
}

TEST_F(EntrustPointCancelling, NamesTheOrderByItsWholeNumberAndDate)
{
    EntrustInfo order{};
    order.orderNo = 9223372036854775807;
    order.orderDate = -9223372036854775807;
    overlay->sendCancelOrderReq(order);
    EXPECT_THAT(questions()[0].toStdString(),
                HasSubstr(R"("orderdate":"-9223372036854775807","ordersno":"9223372036854775807",)"));
}

TEST_F(EntrustPointCancelling, RefersToTheSecurityThatWasListedWhenTheHostShowsAnotherMeanwhile)
{
    axis.onPopup = [this] {
        calc(shenzhen, threeMinutes, Korvane::IntradayPeriod);
        bus().sent.clear();
        return 1;
    };
    overlay->handleMousePress(0, yOfTen());
    EXPECT_TRUE(axis.questions[0].contains("[江山科技]"));
    ASSERT_THAT(questions(), SizeIs(1));
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("market":"SH")"));
    EXPECT_THAT(questions()[0].toStdString(), HasSubstr(R"("stkcode":"600536")"));
}

TEST_F(EntrustPointCancelling, TellsItsObjectsApartByAUuidInBraces)
{
    const QString first = objectId();
    EXPECT_EQ(first.size(), 38);
    EXPECT_EQ(QUuid(first).toString(), first);
    EXPECT_EQ(objectId(), first);
    create();
    EXPECT_NE(objectId(), first);
}

TEST_F(EntrustPointCancelling, IsOfferedAndSentAfterDeleteObject)
{
    overlay->deleteObject();
    axis.onConfirm = [] { return true; };
    choose(1);
    EXPECT_THAT(axis.questions, SizeIs(1));
    EXPECT_EQ(countOf("EntrustCancel"), 1);
}

TEST_F(EntrustPointCancelling, LeavesARunningTimerAlone)
{
    startTimerOddly();
    choose(1);
    EXPECT_EQ(countOf("EntrustCancel"), 1);
    EXPECT_TRUE(timerRunsOn());
    hearCancelled({{QStringLiteral("success"), true}});
    EXPECT_TRUE(timerRunsOn());
}

TEST_F(EntrustPointCancelling, StartsNoTimer)
{
    timer()->stop();
    choose(1);
    EXPECT_EQ(countOf("EntrustCancel"), 1);
    EXPECT_FALSE(timer()->isActive());
}

} // namespace
