#include "trademodule/import/Reversals.h"
#include "tests/trademodule/import/StatementTest.h"

namespace TradeModule {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const char *const entryHeader =
    "成交日期,证券代码,业务名称,成交数量,成交价格,成交金额,手续费,发生金额,成交编号\n";

StatementContents readEntries(const char *rows)
{
    return readStatement(QString::fromUtf8(entryHeader) + QString::fromUtf8(rows), {});
}

} // namespace

TEST(Reversals, TakeAnEarlierPurchaseBackWhateverTheirSigns)
{
    for (const char *const reversal :
         {"20240104,600519,证券买入冲销,-100,1700.00,-170000.00,-5.00,170005.00,2\n",
          "20240104,600519,红冲证券买入,100,1700.00,170000.00,5.00,170005.00,2\n",
          "20240104,600519,撤销买入,100,1700.00,170000.00,5.00,170005.00,2\n"}) {
        const StatementContents contents = readEntries(
            (std::string("20240103,600519,证券买入,100,1700.00,170000.00,5.00,-170005.00,1\n") + reversal)
                .c_str());
        EXPECT_THAT(reasons(contents), IsEmpty()) << reversal;
        EXPECT_THAT(described(contents.executions), IsEmpty()) << reversal;
        EXPECT_EQ(contents.reversals.rows, 1);
        EXPECT_EQ(contents.rowCount, 2);
    }
}

TEST(Reversals, TakeTheLastOfEqualEntriesBack)
{
    const StatementContents contents =
        readEntries("20240103,600519,证券买入,100,1700.00,170000.00,5.00,-170005.00,1\n"
                    "20240104,600519,证券买入,100,1700.00,170000.00,5.00,-170005.00,2\n"
                    "20240104,600519,证券买入冲销,-100,1700.00,-170000.00,-5.00,170005.00,3\n"
                    "20240105,600519,证券买入,100,1700.00,170000.00,5.00,-170005.00,4\n");
    EXPECT_THAT(described(contents.executions), ElementsAre(HasSubstr("deal 1"), HasSubstr("deal 4")));
}

TEST(Reversals, TakeTheEntryOfTheSameNumberBack)
{
    const StatementContents contents =
        readEntries("20240103,600519,证券买入,100,1700.00,170000.00,5.00,-170005.00,1\n"
                    "20240104,600519,证券买入,100,1700.00,170000.00,5.00,-170005.00,2\n"
                    "20240105,600519,证券买入冲销,-100,1700.00,-170000.00,-5.00,170005.00,1\n");
    EXPECT_THAT(described(contents.executions), ElementsAre(HasSubstr("deal 2")));
}

TEST(Reversals, AreRefusedByLineWhereNothingWasToldBefore)
{
    const StatementContents contents =
        readEntries("20240105,600519,证券买入,100,1700.00,170000.00,5.00,-170005.00,1\n"
                    "20240103,600519,证券买入冲销,-100,1700.00,-170000.00,-5.00,170005.00,3\n"
                    "20240106,600519,证券买入冲销,-200,1700.00,-340000.00,-5.00,340005.00,4\n");
    EXPECT_THAT(reasons(contents),
                ElementsAre(HasSubstr("3: the row takes back 100"), HasSubstr("4: the row takes back 200")));
    EXPECT_EQ(contents.rowCount, 3);
    EXPECT_THAT(contents.executions, SizeIs(1));
}

TEST(Reversals, ThatAreCutShortAreRefused)
{
    const StatementContents contents =
        readText("成交日期,证券代码,业务名称,成交数量,成交价格,收入金额,支出金额\n"
                 "20240103,600519,证券买入,100,1700.00,0,170005.00\n"
                 "20240104,600519,证券买入冲销,100,1700.00,170005.00\n");
    EXPECT_THAT(reasons(contents), ElementsAre(HasSubstr("cut short")));
}

TEST(Reversals, TakeNewSharesBack)
{
    const StatementContents contents = readEntries("20240103,001234,新股入帐,500,10.00,0,0,0,1\n"
                                                   "20240104,001234,新股入帐撤销,-500,10.00,0,0,0,2\n"
                                                   "20240103,000001,红股入账,30,0,0,0,0,3\n"
                                                   "20240104,000001,红股入账冲销,-30,0,0,0,0,4\n");
    EXPECT_THAT(reasons(contents), IsEmpty());
    EXPECT_THAT(contents.executions, IsEmpty());
}

TEST(Reversals, OfMoneyMoveItTheOtherWay)
{
    const StatementContents contents = readEntries("20240103,000001,红利入账,0,0,0,0,50.00,1\n"
                                                   "20240104,000001,红利冲正,0,0,0,0,-50.00,2\n");
    ASSERT_THAT(contents.money, SizeIs(2));
    EXPECT_EQ(contents.money[1].amount, Money::ofCents(-5000));
}

TEST(Reversals, OfOrdersThatWereNotDealtAreNothing)
{
    const StatementContents contents = readEntries("20240103,600519,撤销买入,100,1700.00,0,0,0,1\n"
                                                   "20240103,600519,撤买,100,1700.00,0,0,0,2\n");
    EXPECT_THAT(reasons(contents), IsEmpty());
    EXPECT_THAT(contents.executions, IsEmpty());
    EXPECT_EQ(contents.reversals.rows, 0);
}

} // namespace TradeModule
