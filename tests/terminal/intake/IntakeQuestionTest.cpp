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

TEST(IntakeQuestion, TakesADayInEachFormThatFilesHave)
{
    const QString day = QStringLiteral("day");
    for (const char16_t *const typed :
         {u"20260327", u"2026-03-27", u" 2026/3/27", u"2026.03.27", u"2026年3月27日"}) {
        EXPECT_EQ(takenAnswer(day, QString::fromUtf16(typed)), QStringLiteral("20260327"));
    }
    EXPECT_EQ(takenAnswer(day, QStringLiteral("27 March")), QStringLiteral("27 March")) << "is refused later";
    EXPECT_EQ(takenAnswer(QStringLiteral("code"), QStringLiteral("600519")), QStringLiteral("600519"));
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
    EXPECT_EQ(inWordsOfTheWindow(QStringLiteral("see import --suggest"), FileKind::Statement),
              QStringLiteral("see \"Columns and words of your broker\""));
}

TEST(IntakeQuestion, NamesChoicesAsItsFieldsHaveThem)
{
    EXPECT_EQ(inWordsOfTheWindow(QStringLiteral("with --volume shares or --volume lots"), FileKind::BarTable),
              QStringLiteral("with \"Unit of the volume: shares\" or "
                             "\"Unit of the volume: lots: 100 shares, or ten bonds\""));
    EXPECT_EQ(inWordsOfTheWindow(QStringLiteral("add --same, else --new"), FileKind::Statement),
              QStringLiteral("add \"Entries in doubt: are those that are there\", else "
                             "\"Entries in doubt: are new\""));
}

} // namespace
} // namespace Terminal
