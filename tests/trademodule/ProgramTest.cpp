// The program itself, on a real database and a real bus.
#include "tests/endpoint/BusTest.h"
#include "tests/trademodule/LedgerFixture.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

const char *const header =
    "成交日期,成交时间,证券代码,证券名称,买卖标志,成交价格,成交数量,成交金额,成交编号\n";

struct Ended
{
    int exitCode;
    std::string output;
    std::string errors;
};

QJsonObject jsonOf(const QByteArray &text)
{
    return QJsonDocument::fromJson(text).object();
}

class Program : public LedgerFixture
{
protected:
    QStringList ledgerOptions() const { return {QStringLiteral("--ledger"), location()}; }

    static std::unique_ptr<QProcess> start(const QStringList &arguments)
    {
        auto process = std::make_unique<QProcess>();
        process->start(QStringLiteral(TRADEMODULE_PROGRAM), arguments);
        EXPECT_TRUE(process->waitForStarted());
        return process;
    }

    static Ended run(const QStringList &arguments)
    {
        const auto process = start(arguments);
        EXPECT_TRUE(process->waitForFinished(100000));
        return {process->exitCode(), process->readAllStandardOutput().toStdString(),
                process->readAllStandardError().toStdString()};
    }

    Ended runOnLedger(const QStringList &arguments) { return run(ledgerOptions() + arguments); }

    QString write(const QByteArray &rows, const QString &name = QStringLiteral("statement.csv"))
    {
        const QString path = m_directory.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(header + rows);
        return path;
    }

    QString writeManyRows(int count)
    {
        QByteArray rows;
        for (int i = 0; i < count; ++i) {
            rows += QStringLiteral("%1,10:00:00,000001,平安银行,买入,10.00,100,1000.00,%2\n")
                        .arg(20200101 + i % 28)
                        .arg(i + 1)
                        .toUtf8();
        }
        return write(rows);
    }

    Ended import(const QString &file, const QStringList &options = {})
    {
        return runOnLedger(QStringList{QStringLiteral("import"), file} + options);
    }

    int tradeCount() { return ledger().trades(DateRange()).size(); }

private:
    QTemporaryDir m_directory;
};

const QByteArray OneRow = "20210811,11:03:51,600519,贵州茅台,买入,1700.00,100,170000.00,1\n";
const QByteArray BadRow = "2021-02-31,11:03:51,600519,贵州茅台,买入,1700.00,100,170000.00,2\n";

} // namespace

TEST_F(Program, ImportsAStatementOnce)
{
    const QString file = write(OneRow);

    EXPECT_THAT(import(file).output, HasSubstr("imported 1 entry, 0 already in the ledger"));
    EXPECT_THAT(import(file).output, HasSubstr("imported 0 entries, 1 already in the ledger"));

    EXPECT_EQ(tradeCount(), 1);
}

TEST_F(Program, ImportsNothingOfAStatementWithABadRow)
{
    const QString file = write(OneRow + BadRow);

    const Ended ended = import(file);

    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_THAT(ended.output, HasSubstr(file.toStdString() + ":3: \"2021-02-31\" is no date"));
    EXPECT_THAT(ended.output, HasSubstr("nothing imported"));
    EXPECT_EQ(tradeCount(), 0);
}

TEST_F(Program, LeavesBadRowsOutWhenAskedTo)
{
    const Ended ended = import(write(OneRow + BadRow), {QStringLiteral("--skip-bad")});

    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_THAT(ended.output, HasSubstr(":3: "));
    EXPECT_EQ(tradeCount(), 1);
}

TEST_F(Program, ShowsInADryRunWhatWouldHappen)
{
    const Ended ended = import(write(OneRow), {QStringLiteral("--dry-run")});

    EXPECT_THAT(ended.output, HasSubstr("would import 1 entry"));
    EXPECT_EQ(tradeCount(), 0);
}

TEST_F(Program, ShowsNoProgressBarWhereNobodyLooks)
{
    EXPECT_EQ(import(write(OneRow)).errors, "");
}

TEST_F(Program, SaysWhatIsWrongWithItsCommandLine)
{
    EXPECT_EQ(run({QStringLiteral("positions")}).exitCode, 2);
    EXPECT_THAT(run({QStringLiteral("positions")}).errors, HasSubstr("--ledger"));
    EXPECT_THAT(run({QStringLiteral("dance")}).errors, HasSubstr("\"dance\" is no command"));
    EXPECT_THAT(runOnLedger({QStringLiteral("import")}).errors, HasSubstr("give one FILE"));
    EXPECT_THAT(
        runOnLedger({QStringLiteral("trades"), QStringLiteral("--from"), QStringLiteral("monday")}).errors,
        HasSubstr("yyyymmdd"));
    EXPECT_THAT(runOnLedger({QStringLiteral("serve")}).errors, HasSubstr("--bus"));
}

TEST_F(Program, NamesAFileThatIsNotThere)
{
    const Ended ended = import(QStringLiteral("/nowhere/statement.csv"));

    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_THAT(ended.errors, HasSubstr("/nowhere/statement.csv"));
}

TEST_F(Program, HasHelpForEveryCommand)
{
    for (const char *command : {"serve", "import", "place", "cancel", "orders", "trades", "positions"}) {
        const Ended ended = run({QLatin1String(command), QStringLiteral("--help")});
        EXPECT_EQ(ended.exitCode, 0);
        EXPECT_THAT(ended.output, HasSubstr("Usage"));
    }
}

TEST_F(Program, ListsPositionsAndTradesAsTablesAndAsJson)
{
    import(write(OneRow));

    EXPECT_THAT(runOnLedger({QStringLiteral("positions")}).output,
                HasSubstr("600519  SH      贵州茅台  100"));
    const Ended trades =
        runOnLedger({QStringLiteral("trades"), QStringLiteral("--json"), QStringLiteral("--code"),
                     QStringLiteral("600519"), QStringLiteral("--from"), QStringLiteral("20210811"),
                     QStringLiteral("--to"), QStringLiteral("20210811")});
    const QJsonArray rows = QJsonDocument::fromJson(QByteArray::fromStdString(trades.output)).array();
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0].toObject()[QStringLiteral("price")].toString(), QStringLiteral("1700.00"));
}

TEST_F(Program, HoldsAllOrNothingOfAnImportThatWasKilled)
{
    constexpr int RowCount = 100000;
    const QString file = writeManyRows(RowCount);
    const auto process = start(ledgerOptions() + QStringList{QStringLiteral("import"), file});
    ASSERT_TRUE(home().waitUntilWritten());
    ASSERT_EQ(::kill(static_cast<pid_t>(process->processId()), SIGKILL), 0);
    ASSERT_TRUE(process->waitForFinished());

    Ledger survivor(location());
    const int left = survivor.trades(DateRange()).size();

    EXPECT_TRUE(left == 0 || left == RowCount) << left;
    EXPECT_EQ(process->exitStatus(), QProcess::CrashExit) << "the import was over before it could be killed";
    EXPECT_THAT(import(file).output, HasSubstr("already in the ledger"));
    EXPECT_EQ(survivor.trades(DateRange()).size(), RowCount);
}

class ProgramOnABus : public Program
{
protected:
    QStringList busOptions() const { return QStringList{QStringLiteral("--bus"), m_broker.address()}; }

    /// A module that answers; ended by its process id.
    void serve()
    {
        m_module = start(busOptions() + ledgerOptions() + QStringList{QStringLiteral("serve")});
        ASSERT_TRUE(m_chart.join(m_broker.address()));
        m_chart.setRequestTimeout(200); // the module may not be there yet
        ASSERT_TRUE(waitUntil([this] { return !ask("{\"cmd\":\"?\"}").isEmpty(); }, 60000));
        m_chart.setRequestTimeout(20000);
    }

    void TearDown() override
    {
        if (m_module) {
            m_module->terminate();
            EXPECT_TRUE(m_module->waitForFinished(60000));
            EXPECT_EQ(m_module->exitCode(), 0);
            EXPECT_EQ(m_module->exitStatus(), QProcess::NormalExit);
        }
    }

    QJsonObject ask(const QByteArray &question) { return jsonOf(m_chart.request("TradeQuery", question)); }

    TestBroker &broker() { return m_broker; }
    RecordingEndPoint &chart() { return m_chart; }

private:
    TestBroker m_broker;
    RecordingEndPoint m_chart;
    std::unique_ptr<QProcess> m_module;
};

TEST_F(ProgramOnABus, AnswersOnTheChannelOfTheScreen)
{
    book({fill(Side::Buy, bank(), 20240102, 10, 100)});
    serve();
    ASSERT_TRUE(chart().listen("screen1", "TradeQuery"));

    ASSERT_TRUE(chart().sendMessage(
        "Global", "TradeQuery",
        R"({"cmd":"HolderCostPrice","market":"SZ","screenId":"screen1","stkcode":"000001"})"));

    ASSERT_TRUE(chart().waitForMessages(1));
    EXPECT_EQ(chart().messages[0].topic, "TradeQuery");
    const QJsonObject answer = jsonOf(chart().messages[0].payload);
    EXPECT_EQ(answer[QStringLiteral("data")].toObject()[QStringLiteral("costprice")].toString(),
              QStringLiteral("10.050"));
}

TEST_F(ProgramOnABus, AnswersARequestToItsSender)
{
    serve();

    const QJsonObject answer = ask(R"({"cmd":"TodayTrade","market":"SZ","stkcode":"000001"})");

    EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(true));
    EXPECT_TRUE(answer[QStringLiteral("data")].isArray());
}

TEST_F(ProgramOnABus, AnswersAQuestionWithoutAScreenOnTheChannelItCameOn)
{
    serve();
    ASSERT_TRUE(chart().listen("Global", "TradeQuery"));

    chart().sendMessage(
        "Global", "TradeQuery",
        R"({"cmd":"HistoryTrade","market":"SZ","stkcode":"000001","start":"20240101","end":"20240102"})");

    ASSERT_TRUE(chart().waitForMessages(1));
    EXPECT_EQ(jsonOf(chart().messages[0].payload)[QStringLiteral("success")], QJsonValue(true));
}

TEST_F(ProgramOnABus, AnswersNonsenseAndGoesOn)
{
    serve();

    for (const char *nonsense : {"", "{", "[]", "null", "{\"cmd\":{}}", "\xFF\xFE"}) {
        EXPECT_EQ(ask(nonsense)[QStringLiteral("success")], QJsonValue(false)) << nonsense;
    }
    EXPECT_TRUE(
        ask(R"({"cmd":"TodayTrade","market":"SZ","stkcode":"000001"})")[QStringLiteral("success")].toBool());
}

TEST_F(ProgramOnABus, TellsChartsAboutAnImportIntoARunningModule)
{
    serve();
    ASSERT_TRUE(chart().listen("Global", "TradeNotify"));

    const Ended ended =
        run(busOptions() + ledgerOptions() + QStringList{QStringLiteral("import"), write(OneRow)});

    EXPECT_EQ(ended.exitCode, 0) << ended.errors;
    ASSERT_TRUE(chart().waitForMessages(1));
    const QJsonObject notification = jsonOf(chart().messages[0].payload);
    EXPECT_EQ(notification[QStringLiteral("stkcode")].toString(), QStringLiteral("600519"));
    EXPECT_EQ(notification[QStringLiteral("market")].toString(), QStringLiteral("1"));
    EXPECT_TRUE(notification.contains(QStringLiteral("ordersno")));
    EXPECT_EQ(notification[QStringLiteral("orderstatus")].toString(), QStringLiteral("8"));
    EXPECT_EQ(
        ask(R"({"cmd":"HolderCostPrice","market":"SH","stkcode":"600519"})")[QStringLiteral("costprice")]
            .toString(),
        QStringLiteral("1700.000"));
}

TEST_F(ProgramOnABus, DealsAnOrderAgainstTheQuotesAndTellsTheCharts)
{
    serve();
    const QJsonObject placed = ask(R"({"cmd":"EntrustPlace","market":"SZ","stkcode":"000001","bsflag2":"0B",
                                       "orderprice":"10.00","orderqty":"1000"})");
    ASSERT_EQ(placed[QStringLiteral("success")], QJsonValue(true))
        << placed[QStringLiteral("msg")].toString().toStdString();
    ASSERT_TRUE(chart().listen("Global", "TradeNotify"));

    chart().sendMessage("Market", "Quote",
                        R"({"stkcode":"000001","market":"SZ","date":"20240102","time":"1001","open":"9.90",
                            "high":"10.10","low":"9.80","close":"10.00","volume":"100000"})");

    const auto isDealt = [this] {
        return !chart().messages.isEmpty() &&
               jsonOf(chart().messages.constLast().payload)[QStringLiteral("orderstatus")] ==
                   QJsonValue(QStringLiteral("8"));
    };
    ASSERT_TRUE(waitUntil(isDealt));
    const QJsonObject trades = ask(R"({"cmd":"TodayTrade","market":"SZ","stkcode":"000001"})");
    const QJsonObject trade = trades[QStringLiteral("data")].toArray().at(0).toObject();
    EXPECT_EQ(trade[QStringLiteral("matchprice")].toString(), QStringLiteral("9.90"));
    EXPECT_EQ(trade[QStringLiteral("matchtime")].toString(), QStringLiteral("10010000"));
}

TEST_F(ProgramOnABus, TakesOrdersOfItsOtherCommands)
{
    serve();
    ASSERT_TRUE(chart().listen("Global", "TradeNotify"));
    const QStringList options = busOptions() + ledgerOptions();

    const Ended placed =
        run(options + QStringList{QStringLiteral("place"), QStringLiteral("000001"), QStringLiteral("buy"),
                                  QStringLiteral("10.00"), QStringLiteral("100")});
    ASSERT_EQ(placed.exitCode, 0) << placed.errors;
    EXPECT_THAT(placed.output, HasSubstr("order 1 is placed"));
    const Ended cancelled = run(options + QStringList{QStringLiteral("cancel"), QStringLiteral("1")});
    EXPECT_EQ(cancelled.exitCode, 0) << cancelled.errors;

    const auto isCancelled = [this] {
        return runOnLedger({QStringLiteral("orders")}).output.find("已撤") != std::string::npos;
    };
    EXPECT_TRUE(waitUntil(isCancelled));
    EXPECT_TRUE(chart().waitForMessages(2));
}

TEST_F(ProgramOnABus, IgnoresQuotesThatAreNone)
{
    serve();

    for (const char *nonsense : {"", "{}", "[1]", R"({"stkcode":"000001","market":"SZ","time":"1001"})"}) {
        chart().sendMessage("Market", "Quote", nonsense);
    }

    EXPECT_TRUE(
        ask(R"({"cmd":"TodayTrade","market":"SZ","stkcode":"000001"})")[QStringLiteral("success")].toBool());
}

TEST_F(ProgramOnABus, SaysWhenNoChartCouldBeTold)
{
    broker().kill();

    const Ended ended =
        run(busOptions() + ledgerOptions() + QStringList{QStringLiteral("import"), write(OneRow)});

    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_THAT(ended.output, HasSubstr("there is no bus"));
    EXPECT_EQ(tradeCount(), 1);
}

} // namespace TradeModule
