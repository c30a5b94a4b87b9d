// The file of a ledger is moved, removed or replaced while a program serves it.
#include "tests/trademodule/support/ProgramFixture.h"
#include "trademodule/Error.h"
#include "trademodule/ledger/OrderBook.h"

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

class ReplacedLedger : public ProgramOnABus
{
protected:
    void SetUp() override
    {
        ProgramOnABus::SetUp();
        serve();
        ASSERT_TRUE(ask(placing)[QStringLiteral("success")].toBool());
    }

    QString elsewhere() const { return location() + QStringLiteral(".moved"); }

    void move(const QString &from, const QString &to) { ASSERT_TRUE(QFile::rename(from, to)); }

    std::string refusalOf(const QByteArray &question)
    {
        const QJsonObject answer = ask(question);
        EXPECT_EQ(answer[QStringLiteral("success")], QJsonValue(false));
        EXPECT_EQ(answer[QStringLiteral("errcode")], QJsonValue(2));
        return answer[QStringLiteral("msg")].toString().toStdString();
    }

    /// As the file has it that was the ledger when the module began.
    int orderCount() { return OrderBook(&ledger()).ofDay(TradingDate::today()).size(); }
};

} // namespace

TEST_F(ReplacedLedger, IsRefusedWhenItWasMovedAndGoodAgainWhenItIsBack)
{
    move(location(), elsewhere());

    EXPECT_THAT(refusalOf(placing), HasSubstr("removed or moved"));
    EXPECT_THAT(refusalOf(R"({"cmd":"AccountInfo"})"), HasSubstr("removed or moved"));
    EXPECT_EQ(orderCount(), 1);

    move(elsewhere(), location());
    EXPECT_TRUE(ask(placing)[QStringLiteral("success")].toBool());
    EXPECT_EQ(orderCount(), 2);
}

TEST_F(ReplacedLedger, IsRefusedWhenAnotherFileLiesInItsPlace)
{
    move(location(), elsewhere());
    ASSERT_TRUE(QFile::copy(elsewhere(), location()));

    EXPECT_THAT(refusalOf(placing), HasSubstr("another file was put in the place"));
    EXPECT_EQ(orderCount(), 1);
}

TEST_F(ReplacedLedger, IsRefusedWhenItWasRemoved)
{
    ASSERT_TRUE(QFile::remove(location()));

    EXPECT_THAT(refusalOf(placing), HasSubstr("removed or moved"));
    EXPECT_FALSE(QFile::exists(location()));
}

TEST_F(ReplacedLedger, LetsAChangeThatHasBegunEndInNothing)
{
    OrderBook orders(&ledger());
    const Money before = orders.cash();
    {
        Transaction transaction = orders.begin();
        orders.setCash(Money());
        move(location(), elsewhere());
        EXPECT_THROW(transaction.commit(), LedgerUnavailable);
    }
    EXPECT_EQ(orders.cash(), before);
}

} // namespace TradeModule
