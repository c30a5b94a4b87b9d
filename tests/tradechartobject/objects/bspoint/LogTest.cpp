#include "tests/tradechartobject/objects/bspoint/BSPointTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace TradeChart;

namespace {

class BSPointLog : public BSPointTest
{
};

TEST_F(BSPointLog, LogsItsQuestions)
{
    const LogCapture log;
    create();
    calc(shanghai, {makeDayBar(20240102)}, Korvane::DayPeriod);
    bus().takesMessages = false;
    overlay->sendQueryTodayTradeInfoReq();
    EXPECT_THAT(
        log.lines(QtDebugMsg),
        ElementsAre(
            QStringLiteral(
                R"(send sendQueryHistoryTradeInfoReq: "{\"cmd\":\"HistoryTrade\",\"end\":\"20240102\",\"market\":\"SH\",\"screenId\":\"screen-1\",\"start\":\"20240102\",\"stkcode\":\"600536\"}")"),
            QStringLiteral(
                R"(send sendQueryTodayTradeInfoReq: "{\"cmd\":\"TodayTrade\",\"market\":\"SH\",\"screenId\":\"screen-1\",\"stkcode\":\"600536\"}")")))
        << "today's question is logged even when the bus refuses it";
}

TEST_F(BSPointLog, LogsEveryMessageAndTheRowsItReads)
{
    createOnThreeDays();
    const LogCapture log;
    hear("Other", QByteArray("x"));
    hear(Topic::TRADEQUERY,
         sentAnswer("HistoryTrade",
                    QJsonArray{QJsonObject{{QStringLiteral("bizdate"), QStringLiteral("1")}}}));
    hear(Topic::TRADEQUERY,
         sentAnswer("TodayTrade",
                    QJsonArray{QJsonObject{{QStringLiteral("orderdate"), QStringLiteral("1")}}}));
    const auto lines = log.lines(QtDebugMsg);
    ASSERT_THAT(lines, SizeIs(5));
    EXPECT_THAT(log.all(), SizeIs(5));
    EXPECT_EQ(lines[0], QStringLiteral(R"(handleTradeNotify receive topic: "Other" , msg: "x")"));
    EXPECT_EQ(
        lines[1],
        QStringLiteral(
            R"(handleTradeNotify receive topic: "TradeQuery" , msg: "{\"cmd\":\"HistoryTrade\",\"data\":[{\"bizdate\":\"1\"}],\"stkcode\":\"600536\"}")"));
    EXPECT_EQ(lines[2], QStringLiteral(R"(handleQueryHistoryTradeInfoRes obo: "{\"bizdate\":\"1\"}")"));
    EXPECT_EQ(lines[4], QStringLiteral(R"(handleQueryTradeInfoRes obo: "{\n    \"orderdate\": \"1\"\n}\n")"));
}

TEST_F(BSPointLog, LogsEveryRowWithItsChineseNamesLegible)
{
    createOnThreeDays();
    const QJsonObject row{{QStringLiteral("stkname"), QStringLiteral("江山科技")}};
    const LogCapture log;
    for (const TradesAnswer &kind : {pastTrades, todaysTrades}) {
        hear(Topic::TRADEQUERY, sentAnswer(kind.name, QJsonArray{row, row}));
    }
    std::vector<QString> rowLines;
    for (const QString &line : log.lines(QtDebugMsg)) {
        if (line.contains(QStringLiteral(" obo: "))) {
            rowLines.push_back(line);
        }
    }
    const QString past =
        QStringLiteral(R"(handleQueryHistoryTradeInfoRes obo: "{\"stkname\":\"江山科技\"}")");
    const QString todays =
        QStringLiteral(R"(handleQueryTradeInfoRes obo: "{\n    \"stkname\": \"江山科技\"\n}\n")");
    EXPECT_THAT(rowLines, ElementsAre(past, past, todays, todays));
}

TEST_F(BSPointLog, LogsAClick)
{
    createOnThreeDays();
    const LogCapture log;
    overlay->handleMousePress(0, 0);
    EXPECT_THAT(log.lines(QtDebugMsg), ElementsAre(QStringLiteral("BSPoint::handleMousePress is called.")));
    axis.barUnder = [](double) { return -1; };
    overlay->handleMousePress(0, 0);
    EXPECT_THAT(log.lines(QtDebugMsg), SizeIs(2)) << "also beside the bars";
}

TEST_F(BSPointLog, WritesNoDebugLineWhenTheDebugLogIsOff)
{
    const LogCapture log(LogCapture::Debug::Off);
    createOnThreeDays();
    hearHistory({{"B", "20240104", "9301500", "1", "100"}});
    hearToday({{"B", "20240104", "9301500", "1", "100"}});
    overlay->handleMousePress(0, 0);
    overlay->sendQueryTodayTradeInfoReq();
    EXPECT_THAT(log.all(), IsEmpty());
}

} // namespace
