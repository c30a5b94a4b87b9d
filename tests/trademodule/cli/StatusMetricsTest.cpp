#include "trademodule/cli/StatusMetrics.h"

#include "trademodule/Error.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace TradeModule {

namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

BusStatus serving()
{
    BusStatus found{Standing::Serving, Trading::ModuleStatus(), true};
    found.status->module.version = QStringLiteral("0.1.0");
    found.status->module.ledger = QStringLiteral("/a \"b\"\\c");
    found.status->module.since = QDateTime(QDate(2026, 11, 22), QTime(1, 30), Qt::UTC);
    found.status->openOrders = 3;
    found.status->quotes = 5000000000;
    found.status->answers = {{QStringLiteral("TodayTrade"), 12, 1, 3500us, 1200us}};
    return found;
}

std::string metrics(const BusStatus &found)
{
    return metricsOf(found, QStringLiteral("/etc/a")).toStdString();
}

TEST(StatusMetrics, TellWhatTheModuleTells)
{
    const std::string text = metrics(serving());

    EXPECT_THAT(text, HasSubstr("\ntrademodule_up{bus=\"/etc/a\"} 1\n"));
    EXPECT_THAT(text, HasSubstr("\ntrademodule_start_time_seconds{bus=\"/etc/a\"} 1795311000\n"));
    EXPECT_THAT(text, HasSubstr("\ntrademodule_open_orders{bus=\"/etc/a\"} 3\n"));
    EXPECT_THAT(text, HasSubstr("\ntrademodule_quotes_total{bus=\"/etc/a\"} 5000000000\n"));
    EXPECT_THAT(text, HasSubstr("\ntrademodule_answers_total{bus=\"/etc/a\",command=\"TodayTrade\"} 12\n"));
    EXPECT_THAT(
        text,
        HasSubstr("\ntrademodule_answer_seconds_total{bus=\"/etc/a\",command=\"TodayTrade\"} 0.0035\n"));
    EXPECT_THAT(text, HasSubstr(R"(ledger="/a \"b\"\\c")"));
}

TEST(StatusMetrics, TellAlsoThatNobodyServes)
{
    const std::string text = metrics({Standing::NobodyServes});

    EXPECT_THAT(text, HasSubstr("\ntrademodule_up{bus=\"/etc/a\"} 0\n"));
    EXPECT_THAT(text, HasSubstr("{bus=\"/etc/a\",standing=\"nobody-serves\"} 1\n"));
    EXPECT_THAT(text, HasSubstr("{bus=\"/etc/a\",standing=\"serving\"} 0\n"));
    EXPECT_THAT(text, Not(HasSubstr("open_orders")));
}

TEST(StatusMetrics, LeaveOutWhatIsNotKnown)
{
    BusStatus away = serving();
    away.standing = Standing::LedgerAway;
    away.status->openOrders = -1;

    EXPECT_THAT(metrics(away), Not(HasSubstr("open_orders")));
}

TEST(StatusMetrics, AreLinesThatACollectorReads)
{
    const QRegularExpression line(QStringLiteral(
        R"(^(# (HELP|TYPE) trademodule_\w+ .+|trademodule_\w+\{(\w+="([^"\\]|\\.)*",?)+\} \S+)$)"));
    const QStringList lines = QString::fromStdString(metrics(serving())).split(QLatin1Char('\n'));
    for (const QString &text : lines.mid(0, lines.size() - 1)) {
        EXPECT_TRUE(line.match(text).hasMatch()) << text.toStdString();
    }
    EXPECT_EQ(lines.constLast(), QString()) << "the last line ends, too";
}

TEST(StatusMetrics, ReplaceTheirFileAndLeaveNothingBesideIt)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.prom"));
    writeMetrics(path, "old\n");
    writeMetrics(path, "new\n");

    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "new\n");
    EXPECT_THAT(QDir(folder.path()).entryList(QDir::Files), ElementsAre(QStringLiteral("a.prom")));
}

TEST(StatusMetrics, ThatCannotBeWrittenAreAnError)
{
    EXPECT_THROW(writeMetrics(QStringLiteral("/nowhere/a.prom"), "x\n"), Error);
}

} // namespace

} // namespace TradeModule
