#include "trading/ModuleStatus.h"
#include "trading/MessageCheck.h"
#include "trading/ModuleVocabulary.h"

#include <gtest/gtest.h>

#include <QJsonArray>

namespace Trading {

namespace {

using namespace std::chrono_literals;

ModuleStatus complete()
{
    ModuleStatus status;
    status.module.instance = QStringLiteral("one");
    status.module.isOnline = true;
    status.module.fence = 7;
    status.module.process = 1234;
    status.module.since = QDateTime(QDate(2026, 11, 22), QTime(1, 30), Qt::UTC);
    status.openOrders = 3;
    status.quotes = 5000000000;
    status.waitingQuotes = 2;
    status.lastQuote = ModuleStatus::LastQuote{{QStringLiteral("600519"), Market::Shanghai},
                                               *TradingDate::ofText(QStringLiteral("20261120")),
                                               *ClockTime::ofText(QStringLiteral("0931")),
                                               QDateTime(QDate(2026, 11, 20), QTime(1, 31, 2), Qt::UTC)};
    status.answers = {{QStringLiteral("TodayTrade"), 12, 1, 3500us, 1200us}};
    return status;
}

/// What the table of messages has against the answer that brings it.
int faultsIn(const ModuleStatus &status)
{
    const QJsonObject answer{{QStringLiteral("cmd"), QLatin1String(CmdType::MODULESTATUS)},
                             {QStringLiteral("success"), true},
                             {QStringLiteral("data"), status.toJson()}};
    return findingsIn(*findMessage(MessageRole::Answer, QLatin1String(CmdType::MODULESTATUS)), answer).size();
}

TEST(ModuleStatus, IsReadAsItWasWritten)
{
    const ModuleStatus written = complete();

    const auto read = ModuleStatus::ofJson(written.toJson());

    ASSERT_TRUE(read);
    EXPECT_EQ(read->toJson(), written.toJson());
    EXPECT_EQ(read->quotes, 5000000000);
    EXPECT_EQ(read->answers.at(0).longest, 1200us);
    EXPECT_EQ(read->lastQuote->heard, written.lastQuote->heard);
}

TEST(ModuleStatus, IsAnAnswerOfTheTable)
{
    EXPECT_EQ(faultsIn(complete()), 0);
}

TEST(ModuleStatus, WithoutALedgerIsAnAnswerOfTheTableToo)
{
    ModuleStatus status = complete();
    status.ledgerTrouble = QStringLiteral("the server is away");
    status.openOrders = -1;
    status.lastQuote.reset();

    EXPECT_EQ(faultsIn(status), 0);
    EXPECT_EQ(ModuleStatus::ofJson(status.toJson())->openOrders, -1);
}

TEST(ModuleStatus, OfNobodyIsNone)
{
    EXPECT_FALSE(ModuleStatus::ofJson({}));
    EXPECT_FALSE(ModuleStatus::ofJson({{QStringLiteral("quotes"), 5}}));
}

TEST(ModuleStatus, PassesOverWhatIsOfAnotherKind)
{
    QJsonObject strange = complete().toJson();
    strange[QStringLiteral("quotes")] = QStringLiteral("many");
    strange[QStringLiteral("lastquote")] = 5;
    strange[QStringLiteral("answers")] = QStringLiteral("none");

    const auto read = ModuleStatus::ofJson(strange);

    ASSERT_TRUE(read);
    EXPECT_EQ(read->quotes, 0);
    EXPECT_FALSE(read->lastQuote);
    EXPECT_TRUE(read->answers.isEmpty());
    EXPECT_EQ(read->openOrders, 3);
}

TEST(ModuleStatus, PassesOverNumbersThatNothingCounts)
{
    for (const double strange : {-1.0, -1e300, 9007199254740994.0, 1e300}) {
        SCOPED_TRACE(strange);
        QJsonObject told = complete().toJson();
        for (const char *const count : {"quotes", "waitingquotes", "openorders"}) {
            ASSERT_TRUE(told.contains(QLatin1String(count))) << count;
            told[QLatin1String(count)] = strange;
        }
        QJsonArray rows = told[QStringLiteral("answers")].toArray();
        QJsonObject row = rows.at(0).toObject();
        for (const char *const count : {"count", "failures", "seconds", "longest"}) {
            ASSERT_TRUE(row.contains(QLatin1String(count))) << count;
            row[QLatin1String(count)] = strange;
        }
        rows[0] = row;
        told[QStringLiteral("answers")] = rows;

        const auto read = ModuleStatus::ofJson(told);

        ASSERT_TRUE(read);
        EXPECT_EQ(read->quotes, 0);
        EXPECT_EQ(read->waitingQuotes, 0);
        EXPECT_EQ(read->openOrders, -1);
        EXPECT_EQ(read->answers.at(0).count, 0);
        EXPECT_EQ(read->answers.at(0).failures, 0);
        EXPECT_EQ(read->answers.at(0).taken, 0us);
        EXPECT_EQ(read->answers.at(0).longest, 0us);
    }
}

} // namespace

} // namespace Trading
