// When a snapshot has all data of its overlays.
#include "terminal/snapshot/AnswerWatch.h"
#include "tests/terminal/support/SomeBars.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using ::testing::IsEmpty;
using ::testing::Not;

class AnswerWatchTest : public ::testing::Test
{
protected:
    static constexpr char costWord[] = "combined-cost";
    static constexpr char tradesWord[] = "combined-trades";

    static SharedNews news(SharedNews::Kind kind) { return {kind, QStringLiteral("600519")}; }
    static const OverlayKind *kind(const char *word) { return findOverlayKind(QLatin1String(word)); }

    AnswerWatch watch{dailyChart(10), {QLatin1String(costWord), QLatin1String(tradesWord)}, nullptr};
};

TEST_F(AnswerWatchTest, WaitsForTheCalculationAfterTheAnswer)
{
    watch.noteUpdate(kind(costWord));
    watch.noteUpdate(kind(tradesWord));
    EXPECT_THAT(watch.missing(), Not(IsEmpty()));
    watch.takeSharedNews(news(SharedNews::Data));
    EXPECT_EQ(watch.missing().size(), 1);
    watch.noteUpdate(kind(tradesWord));
    EXPECT_THAT(watch.missing(), IsEmpty());
}

TEST_F(AnswerWatchTest, WaitsForTheCostsFirstCalculation)
{
    watch.takeSharedNews(news(SharedNews::Data));
    watch.noteUpdate(kind(tradesWord));
    EXPECT_THAT(watch.missing(), Not(IsEmpty()));
    watch.noteUpdate(kind(costWord));
    EXPECT_THAT(watch.missing(), IsEmpty());
}

TEST_F(AnswerWatchTest, WaitsAgainWhenTheTradesWereLost)
{
    watch.noteUpdate(kind(costWord));
    watch.takeSharedNews(news(SharedNews::Data));
    watch.noteUpdate(kind(tradesWord));
    watch.takeSharedNews(news(SharedNews::Spoilt));
    EXPECT_THAT(watch.missing(), Not(IsEmpty()));
    watch.noteUpdate(kind(tradesWord));
    EXPECT_THAT(watch.missing(), Not(IsEmpty())) << "the answer is still to come";
    watch.takeSharedNews(news(SharedNews::Data));
    watch.noteUpdate(kind(tradesWord));
    EXPECT_THAT(watch.missing(), IsEmpty());
}

TEST_F(AnswerWatchTest, TakesNothingOfAnotherSecurityOrAnotherScreensQuestions)
{
    watch.noteUpdate(kind(costWord));
    watch.noteUpdate(kind(tradesWord));
    watch.takeSharedNews({SharedNews::Data, QStringLiteral("000001")});
    watch.takeSharedNews({SharedNews::None, QStringLiteral("600519")});
    Trading::CheckedAnswer ofAnotherScreensKind;
    ofAnotherScreensKind.command = QStringLiteral("HistoryTrade");
    watch.takeAnswer(ofAnotherScreensKind);
    EXPECT_THAT(watch.missing(), Not(IsEmpty()));
}

} // namespace
} // namespace Terminal
