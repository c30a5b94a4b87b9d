// What the ledger's server is asked when an order is placed: with each row that comes back an account with
// thousands of open orders is slower.
#include "tests/trademodule/support/ExchangeFixture.h"
#include "tests/trademodule/support/MessageProxy.h"

#include <QUrl>
#include <QUrlQuery>

namespace TradeModule {

namespace {

class PlacementCost : public PaperExchangeOfADay
{
protected:
    QString directory() const { return QUrlQuery(QUrl(location())).queryItemValue(QStringLiteral("host")); }
};

} // namespace

TEST_F(PlacementCost, IsOneReadingOfTheOpenOrders)
{
    MessageProxy proxy(directory());
    Ledger ledger(location().replace(directory(), proxy.directory()));
    PaperExchange exchange(&ledger);
    const auto placeOne = [&exchange, &proxy] {
        proxy.failAt(0, MessageProxy::Fault::Cut); // counts from here
        exchange.place(bank(), Direction::Buy, yuan(9.5), 100);
        exchange.report();
        return proxy.messages();
    };
    setCash(1e6);
    placeOne();
    const int besideOne = placeOne();
    constexpr int more = 20;
    for (int i = 0; i < more; ++i) {
        placeOne();
    }

    EXPECT_EQ(placeOne() - besideOne, 1 + more);
}

} // namespace TradeModule
