#include "terminal/trade/OutcomeText.h"
#include "tests/terminal/support/SomeSecurities.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using ::testing::HasSubstr;
using Kind = DeskOutcome::Kind;

const OrderRequest buy{moutai, Direction::Buy, 1400, 100};

OrderRecord waiting()
{
    OrderRecord order;
    order.security = moutai;
    order.number = QStringLiteral("17");
    order.price = 1400;
    order.quantity = 100;
    return order;
}

TEST(OutcomeText, NamesSecurityAndOrderWhateverBecameOfIt)
{
    for (const Kind kind : {Kind::Accepted, Kind::Refused, Kind::NotSent, Kind::NoAnswer}) {
        const DeskOutcome outcome{kind, QStringLiteral("5")};
        EXPECT_THAT(OutcomeText::placed(buy, outcome, false).toStdString(),
                    HasSubstr("MT Buy 100 × 1400.00"));
        EXPECT_THAT(OutcomeText::cancelled(waiting(), outcome, false).toStdString(),
                    HasSubstr("Order 17 of MT"));
    }
}

TEST(OutcomeText, TellsWhoLeavesWhatBecomesOfHisOrders)
{
    EXPECT_THAT(OutcomeText::leaveQuestion({waiting()}, false).text.toStdString(),
                HasSubstr("nothing here tells you"));
    const std::string ofPractice = OutcomeText::leaveQuestion({waiting()}, true).text.toStdString();
    EXPECT_THAT(ofPractice, HasSubstr("until the practice is continued"));
    EXPECT_THAT(ofPractice, ::testing::Not(HasSubstr("nothing here tells you")));
}

TEST(OutcomeText, HidesFiguresInTheWordsOfTheModuleToo)
{
    const DeskOutcome refused{Kind::Refused, QStringLiteral("only 3,500.25 yuan and 300 shares")};
    for (const QString &text :
         {OutcomeText::placed(buy, refused, true), OutcomeText::cancelled(waiting(), refused, true)}) {
        EXPECT_THAT(text.toStdString(), HasSubstr("only *** yuan and *** shares"));
    }
    EXPECT_THAT(OutcomeText::placed(buy, refused, false).toStdString(), HasSubstr("3,500.25"));
}

TEST(OutcomeText, AsksWithEverythingThatTheUserHasToKnow)
{
    const auto question = OutcomeText::sendQuestion(buy, QStringLiteral("account.db (paper)"));
    for (const char *const part : {"MT 600519", "Buy 100 × 1400.00", "140,000.00", "account.db (paper)"}) {
        EXPECT_THAT(question.text.toStdString(), HasSubstr(part));
    }
    EXPECT_THAT(question.yes.toStdString(), HasSubstr("Buy 100 × 1400.00")) << "what the button does";
}

TEST(OutcomeText, HasNoLineInAQuestionThatANumberOrANameBrought)
{
    OrderRecord order = waiting();
    const auto lines = OutcomeText::cancelQuestion(order).count(QLatin1Char('\n'));
    order.number = QStringLiteral("17\nDealt so far: 0");
    order.security.name = QStringLiteral("M\u2028T");
    EXPECT_EQ(OutcomeText::cancelQuestion(order).count(QLatin1Char('\n')), lines);
    EXPECT_FALSE(OutcomeText::cancelQuestion(order).contains(QChar(QChar::LineSeparator)));
}

TEST(OutcomeText, TellsOfADealWhatWasDealtAndItsAveragePrice)
{
    OrderRecord order = waiting();
    order.price = 1420;
    order.status = QStringLiteral("8");
    order.dealt = 100;
    order.dealtAmount = 141384;
    EXPECT_EQ(OutcomeText::dealt(order, false),
              QStringLiteral("Dealt: MT Buy 100, average 1413.840, order 17"));
    EXPECT_EQ(OutcomeText::dealt(order, true),
              QStringLiteral("Dealt: MT Buy ***, average 1413.840, order 17"));
    order.status = QStringLiteral("7");
    order.day = Trading::TradingDate::of(2026, 3, 27);
    order.quantity = 300;
    EXPECT_EQ(OutcomeText::dealt(order, false),
              QStringLiteral("Part dealt: MT Buy 100 of 300, average 1413.840, order 17"));
}

} // namespace
} // namespace Terminal
