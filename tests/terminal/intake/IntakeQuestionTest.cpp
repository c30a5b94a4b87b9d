#include "terminal/intake/IntakeQuestion.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

TEST(IntakeQuestion, ProposesTheCodeInAFilesName)
{
    const auto code = [](const char *name) { return codeInName(QLatin1String(name)).toStdString(); };
    EXPECT_EQ(code("/a/600519.csv"), "600519.SH");
    EXPECT_EQ(code("/a/000001.csv"), "000001.SZ");
    EXPECT_EQ(code("/a/sz.000001_daily.txt"), "000001.SZ");
    EXPECT_EQ(code("/a/SH000001.csv"), "000001.SH") << "an index of Shanghai";
    EXPECT_EQ(code("/a/000001.XSHG.csv"), "000001.SH");
    EXPECT_EQ(code("/a/510300.csv"), "510300.SH");
    EXPECT_EQ(code("/a/113050.csv"), "113050.SH") << "a bond of Shanghai";
    EXPECT_EQ(code("/a/account_880001.csv"), "") << "no code of either market";
    EXPECT_EQ(code("/600519/20240131.csv"), "") << "neither a day nor a folder is a code";
    EXPECT_EQ(code("/a/bars.csv"), "");
}

TEST(IntakeQuestion, SpeaksOfItsFieldsInsteadOfOptions)
{
    EXPECT_EQ(inWordsOfTheWindow(QStringLiteral("add --code, or --codeword"), FileKind::BarTable),
              QStringLiteral("add \"Security\", or --codeword"));
    EXPECT_EQ(
        inWordsOfTheWindow(QStringLiteral("name it with --code, e.g. --code 600519.SH"), FileKind::BarTable),
        QStringLiteral("name it with \"Security\", e.g. 600519.SH"));
    EXPECT_EQ(inWordsOfTheWindow(QStringLiteral("--skip-bad"), FileKind::Statement),
              QStringLiteral("\"Leave these rows out\""));
    EXPECT_EQ(inWordsOfTheWindow(QStringLiteral("see --suggest"), FileKind::Statement),
              QStringLiteral("see \"Columns and words of your broker\""));
}

} // namespace
} // namespace Terminal
