#include "trademodule/cli/RefusalLog.h"

#include "trademodule/ProgramLanguage.h"

#include <gmock/gmock.h>

#include <QStringList>

namespace TradeModule {

namespace {

using ::testing::ElementsAre;

class RefusalLogTest : public ::testing::Test
{
protected:
    RefusalLogTest() { language.set(QStringLiteral("en")); }

    ProgramLanguage language;
    QStringList lines;
    RefusalLog log{[this](const QString &line) { lines.append(line); }};
};

TEST_F(RefusalLogTest, TellsEachRefusalAtOnce)
{
    log.add(QStringLiteral("no cash"));
    log.add(QStringLiteral("no shares"));

    EXPECT_THAT(lines, ElementsAre(QStringLiteral("no cash"), QStringLiteral("no shares")));
}

TEST_F(RefusalLogTest, CountsWhatComesAgain)
{
    for (int i = 0; i < 3; ++i) {
        log.add(QStringLiteral("no cash"));
    }
    log.tellCounts();
    log.tellCounts();

    EXPECT_THAT(lines, ElementsAre(QStringLiteral("no cash"),
                                   QStringLiteral("no cash (2 times more within a minute)")));
}

TEST_F(RefusalLogTest, CountsTogetherWhatIsTooMuch)
{
    for (int i = 0; i < RefusalLog::mostLines + 5; ++i) {
        log.add(QString::number(i));
    }
    log.tellCounts();

    EXPECT_EQ(lines.size(), RefusalLog::mostLines + 1);
    EXPECT_EQ(lines.constLast(), QStringLiteral("5 other refusals within a minute"));
}

TEST_F(RefusalLogTest, CutsWhatIsLong)
{
    log.add(QStringLiteral("no such command: ") + QString(1'000'000, QLatin1Char('x')));
    log.add(QString(RefusalLog::mostCharacters, QLatin1Char('y')));

    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines.at(0).size(), RefusalLog::mostCharacters);
    EXPECT_TRUE(lines.at(0).startsWith(QStringLiteral("no such command: xx")));
    EXPECT_TRUE(lines.at(0).endsWith(QStringLiteral(u"…")));
    EXPECT_EQ(lines.at(1), QString(RefusalLog::mostCharacters, QLatin1Char('y')));
}

TEST_F(RefusalLogTest, CountsTogetherWhatIsCutToTheSame)
{
    const QString beginning(RefusalLog::mostCharacters, QLatin1Char('x'));
    log.add(beginning + QLatin1Char('1'));
    log.add(beginning + QLatin1Char('2'));

    EXPECT_EQ(lines.size(), 1);
}

TEST_F(RefusalLogTest, BeginsAnewWithEachMinute)
{
    log.add(QStringLiteral("no cash"));
    log.tellCounts();
    log.add(QStringLiteral("no cash"));

    EXPECT_EQ(lines.size(), 2);
}

} // namespace

} // namespace TradeModule
