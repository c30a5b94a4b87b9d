// Pictures of the built program whose trading module answers what it must not.
#include "tests/terminal/support/ModuleAnswers.h"
#include "tests/terminal/support/ScriptedModule.h"
#include "tests/terminal/support/TerminalProgramFixture.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

class WrongAnswerProgram : public Program
{
protected:
    WrongAnswerProgram() { qputenv("XDG_RUNTIME_DIR", m_runtime.path().toLocal8Bit()); }
    ~WrongAnswerProgram() override { qputenv("XDG_RUNTIME_DIR", m_before); }

    static QJsonValue cost(const QJsonValue &price)
    {
        return QJsonObject{{QStringLiteral("stkcode"), QStringLiteral("600519")},
                           {QStringLiteral("market"), QStringLiteral("1")},
                           {QStringLiteral("costprice"), price}};
    }

    /// Takes a picture of the cost, with a trading module that answers so.
    Outcome pictureOfCost(const QJsonObject &answer)
    {
        QProcess process;
        process.setProcessEnvironment(m_environment);
        process.start(m_program, {QStringLiteral("--data"), QStringLiteral(TRADECHART_EXAMPLES),
                                  QStringLiteral("--plugin"), QStringLiteral(PLUGIN_FILE),
                                  QStringLiteral("--snapshot"), picture(), QStringLiteral("--code"),
                                  QStringLiteral("600519"), QStringLiteral("--overlays"),
                                  QStringLiteral("cost"), QStringLiteral("--lang"), QStringLiteral("en")});
        ScriptedModule module(m_folder.path());
        QJsonObject keys = answer;
        keys.insert(QStringLiteral("market"), QStringLiteral("1")); // the question's was in letters
        module.setAnswer(QStringLiteral("HolderCostPrice"), keys);
        EXPECT_TRUE(waitUntil([&] { return process.state() == QProcess::NotRunning; }));
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardError())};
    }

    QByteArray m_before = qgetenv("XDG_RUNTIME_DIR");
};

TEST_F(WrongAnswerProgram, IsTakenOfRightOnes)
{
    const Outcome outcome = pictureOfCost(withData(cost(QStringLiteral("1700.00"))));
    EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);
    EXPECT_TRUE(QFile::exists(picture()));
}

TEST_F(WrongAnswerProgram, IsNoneAndNamesCommandAndKey)
{
    const Outcome outcome = pictureOfCost(withData(cost(1700.0)));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.messages.contains(
        QStringLiteral("No picture was written: HolderCostPrice: \"costprice\" is 1700, but must be: text")))
        << qPrintable(outcome.messages);
    EXPECT_FALSE(QFile::exists(picture()));
}

TEST_F(WrongAnswerProgram, IsNoneWhenTheTradingModuleRefuses)
{
    const Outcome outcome = pictureOfCost(refusedWith("the ledger is busy"));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.messages.contains(
        QStringLiteral("No picture was written: HolderCostPrice: refused: the ledger is busy")))
        << qPrintable(outcome.messages);
}

} // namespace
} // namespace Terminal
