// What the program says to who starts it from a shell.
#include "tests/terminal/support/TerminalProgramFixture.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class CommandLineProgram : public Program
{
protected:
    std::string said(const QStringList &arguments)
    {
        QProcess process;
        process.setProcessEnvironment(m_environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(m_program, arguments);
        EXPECT_TRUE(process.waitForFinished(60000));
        return process.readAll().toStdString();
    }
};

TEST_F(CommandLineProgram, HelpsInTheLanguageThatIsAskedFor)
{
    const std::string chinese = said({QStringLiteral("--lang=zh"), QStringLiteral("--help")});
    EXPECT_THAT(chinese, HasSubstr("要显示的证券"));
    EXPECT_THAT(chinese, HasSubstr("用法："));
    EXPECT_THAT(chinese, Not(HasSubstr("Security to show")));
    EXPECT_THAT(said({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("--help")}),
                HasSubstr("Security to show"));
}

TEST_F(CommandLineProgram, SaysWhatIsWrongInTheLanguageOfTheShell)
{
    m_environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("zh_CN.UTF-8"));
    EXPECT_THAT(said({QStringLiteral("--size"), QStringLiteral("3")}), HasSubstr("--size 的值为“3”，但应为"));
    m_environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    EXPECT_THAT(said({QStringLiteral("--size"), QStringLiteral("3")}), HasSubstr("--size is \"3\""));
}

} // namespace
} // namespace Terminal
