#include "trademodule/import/EntryKind.h"
#include "tests/support/ByName.h"
#include "tests/trademodule/import/StatementTest.h"

namespace TradeModule {

namespace {

struct Business
{
    std::string name;
    std::string word;
    std::string result; ///< a side, or the kind that is left out
};

class EntryKindOfWord : public ::testing::TestWithParam<Business>
{
};

} // namespace

TEST_P(EntryKindOfWord, IsTakenForWhatItMeans)
{
    const std::string statement =
        "成交日期,证券代码,买卖标志,成交价格,成交数量\n20210811,600000," + GetParam().word + ",9.10,100\n";
    const StatementContents contents = readText(statement.c_str());

    const std::string result =
        contents.executions.isEmpty()
            ? (contents.leftOut.empty() ? "unknown" : contents.leftOut.begin()->first.toStdString())
            : (contents.executions[0].side == Side::Buy ? "buy" : "sell");
    EXPECT_EQ(result, GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    Of, EntryKindOfWord,
    ::testing::Values(
        Business{"Buy", "买入", "buy"}, Business{"B", "B", "buy"},
        Business{"CollateralBuy", "担保物买入", "buy"}, Business{"MarginBuy", "融资买入", "buy"},
        Business{"NamedBuy", "证券买入:分红股份", "buy"}, Business{"Sell", "卖", "sell"},
        Business{"NamedSell", "证券卖出(浦发银行)", "sell"}, Business{"SellToRepay", "卖券还款", "sell"},
        Business{"ShortSale", "融券卖出", "short sales"}, Business{"CancelledBuy", "撤买", "cancellations"},
        Business{"Allotment", "申购配号", "allotment numbers"},
        Business{"Collateral", "担保品划入", "custody moves"}, Business{"Repo", "质押回购拆出", "repo"},
        Business{"DividendTax", "股息红利税补缴", "dividend tax"}, Business{"Unknown", "不详", "unknown"}),
    ByName());

} // namespace TradeModule
