#include "terminal/intake/IntakeQuestion.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

TEST(IntakeQuestion, ProposesWhatAFilesNameAnswers)
{
    const QString path = QStringLiteral("/a/600519_20260327.csv");
    EXPECT_EQ(answerInName(QStringLiteral("code"), path), QStringLiteral("600519.SH"));
    EXPECT_EQ(answerInName(QStringLiteral("day"), path), QStringLiteral("20260327"));
    EXPECT_EQ(answerInName(QStringLiteral("volume"), path), QString());
}

TEST(IntakeQuestion, SpeaksOfItsFieldsInsteadOfOptions)
{
    EXPECT_EQ(inWordsOfTheWindow(QStringLiteral("add --code, or --codeword"), FileKind::BarTable),
              QStringLiteral("add \"Security\", or --codeword"));
    EXPECT_EQ(
        inWordsOfTheWindow(QStringLiteral("name it with --code, e.g. --code 600519.SH"), FileKind::BarTable),
        QStringLiteral("name it with \"Security\", e.g. 600519.SH"));
    EXPECT_EQ(inWordsOfTheWindow(QStringLiteral("--day and --code, e.g. --day 20260327 --code 600519.SH"),
                                 FileKind::BarTable),
              QStringLiteral("\"Day\" and \"Security\", e.g. 20260327 600519.SH"));
    EXPECT_EQ(inWordsOfTheWindow(QStringLiteral("--skip-bad"), FileKind::Statement),
              QStringLiteral("\"Leave these rows out\""));
    EXPECT_EQ(inWordsOfTheWindow(QStringLiteral("see --suggest"), FileKind::Statement),
              QStringLiteral("see \"Columns and words of your broker\""));
}

} // namespace
} // namespace Terminal
