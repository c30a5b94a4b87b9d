#pragma once

#include "tests/endpoint/BusTest.h"
#include "tests/trademodule/support/LedgerFixture.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <memory>

#include <chrono>

namespace TradeModule {

/// The first line of the statements that tests write.
inline constexpr char statementHeader[] =
    "成交日期,成交时间,证券代码,证券名称,买卖标志,成交价格,成交数量,成交金额,成交编号\n";

/// A row below it that can be booked, and one whose day does not exist.
inline const QByteArray oneRow = "20210811,11:03:51,600519,贵州茅台,买入,1700.00,100,170000.00,1\n";
inline const QByteArray badRow = "2021-02-31,11:03:51,600519,贵州茅台,买入,1700.00,100,170000.00,2\n";

/// A question to buy 100 shares of the bank at 10.00.
inline const QByteArray placing = R"({"cmd":"EntrustPlace","market":"SZ","stkcode":"000001","bsflag2":"0B",
                                      "orderprice":"10.00","orderqty":"100"})";

/// What a program that has ended left.
struct Ended
{
    int exitCode;
    std::string output;
    std::string errors;
};

/// The number that a long run by hand sets a variable of the environment to.
inline unsigned numberOf(const char *variable, unsigned otherwise)
{
    bool isNumber = false;
    const unsigned number = qEnvironmentVariable(variable).toUInt(&isNumber);
    return isNumber ? number : otherwise;
}

inline QJsonObject jsonOf(const QByteArray &text)
{
    return QJsonDocument::fromJson(text).object();
}

/// A test of the program itself, on an empty ledger in a real database.
class Program : public LedgerFixture
{
protected:
    QStringList ledgerOptions() const { return {QStringLiteral("--ledger"), location()}; }

    /// Starts the program in a locale, which decides the language of its texts.
    static std::unique_ptr<QProcess> start(const QStringList &arguments,
                                           const QString &locale = QStringLiteral("C.UTF-8"))
    {
        auto process = std::make_unique<QProcess>();
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("LC_ALL"), locale);
        process->setProcessEnvironment(environment);
        process->start(QStringLiteral(TRADEMODULE_PROGRAM), arguments);
        EXPECT_TRUE(process->waitForStarted());
        return process;
    }

    static Ended run(const QStringList &arguments, const QString &locale = QStringLiteral("C.UTF-8"))
    {
        const auto process = start(arguments, locale);
        EXPECT_TRUE(process->waitForFinished(100000));
        return {process->exitCode(), process->readAllStandardOutput().toStdString(),
                process->readAllStandardError().toStdString()};
    }

    Ended runOnLedger(const QStringList &arguments) { return run(ledgerOptions() + arguments); }

    QString writeFile(const QString &name, const QByteArray &bytes)
    {
        const QString path = m_directory.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }

    QString write(const QByteArray &rows, const QString &name = QStringLiteral("statement.csv"))
    {
        return writeFile(name, statementHeader + rows);
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

/// A test of the serving program on a real bus, with a chart that asks it.
class ProgramOnABus : public Program
{
protected:
    QStringList busOptions() const { return QStringList{QStringLiteral("--bus"), m_broker.address()}; }

    /// A module that answers; ended by its process id.
    void serve(const QStringList &options = {}, const QStringList &ownOptions = {})
    {
        startModule(options, ownOptions);
        if (!m_chart.isConnected()) {
            ASSERT_TRUE(m_chart.join(m_broker.address()));
        }
        awaitModule();
    }

    /// Until one answers: asked for orders again and again, it would do nothing else.
    void awaitModule()
    {
        m_chart.setRequestTimeout(std::chrono::milliseconds(200)); // what is asked before is lost
        ASSERT_TRUE(waitUntil([this] { return !ask("{\"cmd\":\"?\"}").isEmpty(); }, std::chrono::minutes(1)));
        m_chart.setRequestTimeout(std::chrono::seconds(20));
    }

    /// A module that may not answer yet; `ownOptions` are those of the command alone.
    void startModule(const QStringList &options = {}, const QStringList &ownOptions = {})
    {
        m_module = start(busOptions() + ledgerOptions() + options + QStringList{QStringLiteral("serve")} +
                         ownOptions);
    }

    void TearDown() override
    {
        if (m_module) {
            if (m_module->state() != QProcess::NotRunning) {
                m_module->terminate();
                EXPECT_TRUE(m_module->waitForFinished(60000));
            }
            EXPECT_EQ(m_module->exitCode(), 0);
            EXPECT_EQ(m_module->exitStatus(), QProcess::NormalExit);
        }
    }

    QJsonObject ask(const QByteArray &question) { return jsonOf(m_chart.request("TradeQuery", question)); }

    QProcess &module() { return *m_module; }
    TestBroker &broker() { return m_broker; }
    RecordingEndPoint &chart() { return m_chart; }

private:
    TestBroker m_broker;
    RecordingEndPoint m_chart;
    std::unique_ptr<QProcess> m_module;
};

} // namespace TradeModule
