// The trading module as a child of the terminal.
#include "terminal/services/TradeModuleProcess.h"
#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

namespace Terminal {
namespace {

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
                              QStringLiteral("en"), nullptr);
    QStringList told;
    QObject::connect(&module, &TradeModuleProcess::failed, &module,
                     [&told](const QString &text) { told += text; });
    module.start();
    ASSERT_TRUE(waitUntil([&ending] { return ending.starts() >= 3; }));
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told.front().contains(QStringLiteral("this ledger is served already")));
}

TEST(TradeModuleProcess, IsNamedWhenItCannotBeStarted)
{
    TradeModuleProcess module(QStringLiteral("/nowhere/trademodule"), QStringLiteral("l"),
                              QStringLiteral("b"), QStringLiteral("en"), nullptr);
    QString reason;
    QObject::connect(&module, &TradeModuleProcess::failed, &module,
                     [&reason](const QString &text) { reason = text; });
    module.start();
    EXPECT_TRUE(waitUntil([&reason] { return reason.contains(QStringLiteral("/nowhere/trademodule")); }));
}

} // namespace
} // namespace Terminal
