#include "trademodule/results/ReceivedActions.h"

#include <gmock/gmock.h>

namespace TradeModule {
namespace {

AccountEvent shares(EventKind kind, int day, qint64 quantity)
{
    AccountEvent event{kind, TradingDate::ofNumber(day).value()};
    event.quantity = quantity;
    return event;
}

AccountEvent money(EventKind kind, int day, int yuan)
{
    AccountEvent event{kind, TradingDate::ofNumber(day).value()};
    event.amount = Money::ofCents(yuan * 100);
    return event;
}

std::vector<ReceivedAction> receivedOf(const std::vector<AccountEvent> &events)
{
    ReceivedActions received;
    for (const AccountEvent &event : events) {
        received.take(event);
    }
    return received.all();
}

TEST(ReceivedActions, TellCashAndSharesOfADayWithWhatWasHeldTheDayBefore)
{
    const auto received =
        receivedOf({shares(EventKind::Buy, 20130601, 1000), shares(EventKind::Buy, 20130620, 500),
                    money(EventKind::Dividend, 20130620, 170), shares(EventKind::Bonus, 20130620, 600)});
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].date.number(), 20130620);
    EXPECT_EQ(received[0].held, 1000) << "what was bought on the ex-date receives nothing";
    EXPECT_EQ(received[0].cash, Money::ofCents(17000));
    EXPECT_EQ(received[0].bonus, 600);
}

TEST(ReceivedActions, CountTheirOwnSharesForTheNextOne)
{
    const auto received =
        receivedOf({shares(EventKind::Buy, 20130601, 1000), shares(EventKind::Bonus, 20130620, 600),
                    shares(EventKind::Sell, 20140101, 100), shares(EventKind::In, 20140102, 20),
                    shares(EventKind::Out, 20140103, 10), money(EventKind::Dividend, 20140612, 241)});
    ASSERT_EQ(received.size(), 2U);
    EXPECT_EQ(received[1].held, 1510);
    EXPECT_EQ(received[1].bonus, 0);
}

TEST(ReceivedActions, TellSharesThatWerePutTogetherBelowZero)
{
    const auto received =
        receivedOf({shares(EventKind::Buy, 20130601, 1000), shares(EventKind::Merger, 20130620, 500)});
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].bonus, -500);
}

TEST(ReceivedActions, LeaveTradesTaxesAndInterestOut)
{
    EXPECT_TRUE(receivedOf({shares(EventKind::Buy, 20130601, 1000), money(EventKind::Tax, 20130620, 1),
                            money(EventKind::Interest, 20130620, 1), shares(EventKind::Sell, 20130621, 1000)})
                    .empty());
}

} // namespace
} // namespace TradeModule
