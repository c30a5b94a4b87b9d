// The trading module as a child of the terminal.
#include "terminal/services/TradeModuleProcess.h"
#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

namespace Terminal {
namespace {

using namespace std::chrono_literals;

/// A module that writes down that it was started, says something and ends.
class EndingModule
{
public:
    explicit EndingModule(const char *says)
    {
        QFile script(program());
        EXPECT_TRUE(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\necho started >>\"$0.starts\"\n" + QByteArray(says) + "\nexit 1\n");
        script.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    }

    QString ledger() const { return m_folder.filePath(QStringLiteral("ledger")); }

    void writeLedger(const char *text) const
    {
        QFile file(ledger());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    QString program() const { return m_folder.filePath(QStringLiteral("module")); }

    int starts() const
    {
        QFile file(program() + QStringLiteral(".starts"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().count('\n') : 0;
    }

private:
    QTemporaryDir m_folder;
};

TEST(TradeModuleProcess, IsStartedAgainWhenItEnds)
{
    const EndingModule ending("");
    TradeModuleProcess module(ending.program(), QStringLiteral("l"), QStringLiteral("b"),
                              QStringLiteral("en"), nullptr);
    module.start();
    EXPECT_TRUE(waitUntil([&ending] { return ending.starts() >= 2; }));
}

TEST(TradeModuleProcess, SaysInItsOwnWordsWhyItEndedAndOnceForTheSameReason)
{
    const EndingModule ending("echo 'this ledger is served already' >&2");
    TradeModuleProcess module(ending.program(), QStringLiteral("l"), QStringLiteral("b"),
                              QStringLiteral("en"), nullptr, 10ms);
    QStringList told;
    QObject::connect(&module, &TradeModuleProcess::failed, &module,
                     [&told](const QString &text) { told += text; });
    module.start();
    ASSERT_TRUE(waitUntil([&ending] { return ending.starts() >= 3; }));
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told.front().contains(QStringLiteral("this ledger is served already")));
}

TEST(TradeModuleProcess, IsLeftWithinTwoSecondsThoughItDoesNotEnd)
{
    const EndingModule frozen("trap '' TERM\nwhile :; do sleep 0.1; done");
    auto module = std::make_unique<TradeModuleProcess>(frozen.program(), QStringLiteral("l"),
                                                       QStringLiteral("b"), QStringLiteral("en"), nullptr);
    module->start();
    ASSERT_TRUE(waitUntil([&frozen] { return frozen.starts() == 1; }));
    QElapsedTimer clock;
    clock.start();

    module.reset();

    EXPECT_LT(clock.elapsed(), 2000);
}

/// What is told of a module that behaves so.
QString toldOf(const char *behaviour)
{
    const EndingModule ending(behaviour);
    TradeModuleProcess module(ending.program(), QStringLiteral("l"), QStringLiteral("b"),
                              QStringLiteral("en"), nullptr);
    QString told;
    QObject::connect(&module, &TradeModuleProcess::failed, &module,
                     [&told](const QString &text) { told = text; });
    module.start();
    waitUntil([&told] { return !told.isEmpty(); });
    return told;
}

TEST(TradeModuleProcess, SaysTheWholeReasonOfADatabaseThatUsesSeveralLines)
{
    const QString told =
        toldOf("echo hello >&2\n"
               "echo 'trademodule: cannot be opened: connection to server failed: refused' >&2\n"
               "echo '\tIs it running?' >&2");
    EXPECT_TRUE(told.contains(QStringLiteral("refused"))) << qPrintable(told);
    EXPECT_TRUE(told.contains(QStringLiteral("Is it running?"))) << qPrintable(told);
    EXPECT_TRUE(told.contains(QStringLiteral("database server runs"))) << qPrintable(told);
    EXPECT_FALSE(told.contains(QStringLiteral("hello"))) << qPrintable(told);
}

TEST(TradeModuleProcess, TakesNothingForTheReasonThatOneWhichWasKilledSaidBefore)
{
    const QString told = toldOf("echo 'trademodule: serving the ledger' >&2\nkill -KILL $$");
    EXPECT_FALSE(told.contains(QStringLiteral("serving the ledger"))) << qPrintable(told);
}

TEST(TradeModuleProcess, SaysWhatToDoAboutADamagedLedger)
{
    const QString told = toldOf("echo 'trademodule: the ledger refused: file is not a database' >&2");
    EXPECT_TRUE(told.contains(QStringLiteral("--ledger"))) << qPrintable(told);
}

TEST(TradeModuleProcess, SaysWhatToDoAboutAFullDisk)
{
    const QString told = toldOf("echo 'trademodule: the ledger refused: database or disk is full' >&2");
    EXPECT_TRUE(told.contains(QStringLiteral("Make room"))) << qPrintable(told);
}

TEST(TradeModuleProcess, StandsByWhileAnotherOneServesItsLedger)
{
    EXPECT_TRUE(toldOf("echo \"$*\" >&2").endsWith(QStringLiteral("serve --standby")));
}

TEST(TradeModuleProcess, IsToldItsLedgerWhereNobodyElseReadsIt)
{
    EXPECT_FALSE(toldOf("echo \"$*\" >&2").contains(QStringLiteral("--ledger")));
    EXPECT_TRUE(toldOf("echo \"<$TRADEMODULE_LEDGER>\" >&2").contains(QStringLiteral("<l>")));
}

TEST(TradeModuleProcess, IsReplacedWhenItHangs)
{
    const EndingModule hanging("exec sleep 60");
    TradeModuleProcess module(hanging.program(), QStringLiteral("l"), QStringLiteral("b"),
                              QStringLiteral("en"), nullptr);
    QString told;
    QObject::connect(&module, &TradeModuleProcess::failed, &module,
                     [&told](const QString &text) { told = text; });
    module.start();
    ASSERT_TRUE(waitUntil([&hanging] { return hanging.starts() == 1; }));
    const qint64 first = module.processId();

    module.replace();

    EXPECT_TRUE(waitUntil([&hanging] { return hanging.starts() == 2; }));
    EXPECT_NE(module.processId(), first);
    EXPECT_TRUE(told.contains(QStringLiteral("did not answer"))) << qPrintable(told);
}

TEST(TradeModuleProcess, IsTriedLessAndLessOften)
{
    const EndingModule ending("");
    TradeModuleProcess module(ending.program(), ending.ledger(), QStringLiteral("b"), QStringLiteral("en"),
                              nullptr, 50ms);
    QElapsedTimer running;
    running.start();
    module.start();
    ASSERT_TRUE(waitUntil([&ending] { return ending.starts() == 5; }));
    EXPECT_GE(running.elapsed(), 50 + 100 + 200 + 400);
}

TEST(TradeModuleProcess, IsTriedAtOnceWhenItsLedgerChanges)
{
    const EndingModule ending("");
    ending.writeLedger("damaged");
    TradeModuleProcess module(ending.program(), ending.ledger(), QStringLiteral("b"), QStringLiteral("en"),
                              nullptr, 20ms);
    module.start();
    ASSERT_TRUE(waitUntil([&ending] { return ending.starts() == 6; })); // the next pause is 640 ms
    QElapsedTimer running;
    running.start();
    ASSERT_FALSE(waitUntil([&ending] { return ending.starts() > 6; }, 100ms));
    ending.writeLedger("a copy of the day before");
    ASSERT_TRUE(waitUntil([&ending] { return ending.starts() > 6; }));
    EXPECT_LT(running.elapsed(), 500);
}

/// What is told of a program that cannot be started.
QString toldOfProgram(const QString &program)
{
    TradeModuleProcess module(program, QStringLiteral("l"), QStringLiteral("b"), QStringLiteral("en"),
                              nullptr);
    QString told;
    QObject::connect(&module, &TradeModuleProcess::failed, &module,
                     [&told](const QString &text) { told = text; });
    module.start();
    waitUntil([&told] { return !told.isEmpty(); });
    return told;
}

TEST(TradeModuleProcess, IsNamedWhenItsProgramIsNotThere)
{
    EXPECT_EQ(
        toldOfProgram(QStringLiteral("/nowhere/trademodule")),
        QStringLiteral("The program of the trading module, /nowhere/trademodule, is not there: install it, "
                       "or name it with --module."));
}

TEST(TradeModuleProcess, IsNamedWhenItsProgramMayNotBeRun)
{
    const QTemporaryDir folder;
    const QString told = toldOfProgram(folder.path());
    EXPECT_TRUE(told.contains(QStringLiteral("is no program that may be run"))) << qPrintable(told);
    EXPECT_FALSE(told.contains(QStringLiteral("exec"))) << qPrintable(told);
}

TEST(TradeModuleProcess, IsStartedWhenItsProgramIsThereLater)
{
    const EndingModule ending("");
    const QString program = ending.program();
    ASSERT_TRUE(QFile::rename(program, program + QStringLiteral(".away")));
    TradeModuleProcess module(program, QStringLiteral("l"), QStringLiteral("b"), QStringLiteral("en"),
                              nullptr, 10ms);
    module.start();
    ASSERT_TRUE(QFile::rename(program + QStringLiteral(".away"), program));
    EXPECT_TRUE(waitUntil([&ending] { return ending.starts() >= 1; }));
}

} // namespace
} // namespace Terminal
