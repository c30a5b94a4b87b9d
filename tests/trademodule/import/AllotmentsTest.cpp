#include "trademodule/import/Allotments.h"
#include "tests/trademodule/import/StatementTest.h"

namespace TradeModule {

namespace {

using ::testing::ElementsAre;

StatementContents readRows(const std::string &rows)
{
    return readText(("成交日期,证券代码,操作,成交数量,成交价格,发生金额\n" + rows).c_str());
}

} // namespace

TEST(Allotments, BringTheSharesOnceWhenPaymentAndEntryAreTold)
{
    const StatementContents contents =
        readRows("20240103,600000,中签缴款,500,10.00,-5000.00\n20240108,600000,新股入帐,500,0,0\n");

    EXPECT_THAT(described(contents.executions),
                ElementsAre("20240108 00000000 allotment SH600000 500 at 10.00 = 5000.00 fee 0.00"));
    ASSERT_EQ(contents.money.size(), 1);
    EXPECT_EQ(contents.money[0].amount.text(), QStringLiteral("-5000.00"));
}

TEST(Allotments, BringTheSharesWithThePaymentWhenNoEntryIsTold)
{
    EXPECT_THAT(described(readRows("20240103,600000,配股缴款,150,8.00,-1200.00\n").executions),
                ElementsAre("20240103 00000000 allotment SH600000 150 at 8.00 = 1200.00 fee 0.00"));
}

TEST(Allotments, TakeANoticeForNothing)
{
    const StatementContents contents =
        readRows("20240102,600000,新股中签,500,10.00,0\n20240103,600000,中签扣款,500,10.00,-5000.00\n");

    EXPECT_THAT(described(contents.executions),
                ElementsAre("20240103 00000000 allotment SH600000 500 at 10.00 = 5000.00 fee 0.00"));
}

TEST(Allotments, AreBookedUnderTheSharesOwnCode)
{
    EXPECT_THAT(described(readRows("20240103,730001,中签缴款,500,10.00,-5000.00\n").executions),
                ElementsAre("20240103 00000000 allotment SH600001 500 at 10.00 = 5000.00 fee 0.00"));
}

} // namespace TradeModule
