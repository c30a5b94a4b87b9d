#include "trademodule/import/Business.h"
#include "tests/support/ByName.h"
#include "tests/trademodule/import/StatementTest.h"

namespace TradeModule {

namespace {

struct Word
{
    std::string name;
    std::string word;
    std::string result; ///< what becomes of 100 shares and no money: a side, or the kind that is left out
};

class BusinessOfWord : public ::testing::TestWithParam<Word>
{
};

std::string resultOf(const StatementContents &contents)
{
    const char *const sides[] = {"buy", "sell", "bonus", "merger", "allotment", "in", "out"};
    if (!contents.executions.isEmpty()) {
        return sides[static_cast<int>(contents.executions[0].side)];
    }
    if (contents.shortSales.rows > 0) {
        return "short sales";
    }
    const auto leftOut = contents.kinds.find(Outcome::Nothing);
    return leftOut == contents.kinds.end() ? "unknown" : leftOut->second.begin()->first.toStdString();
}

} // namespace

TEST_P(BusinessOfWord, IsTakenForWhatItMeans)
{
    const std::string statement =
        "成交日期,证券代码,买卖标志,成交价格,成交数量\n20210811,600000," + GetParam().word + ",9.10,100\n";

    EXPECT_EQ(resultOf(readText(statement.c_str())), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    Of, BusinessOfWord,
    ::testing::Values(
        Word{"Buy", "买入", "buy"}, Word{"B", "B", "buy"}, Word{"CollateralBuy", "担保物买入", "buy"},
        Word{"BuyOfCollateral", "买入担保品", "buy"}, Word{"MarginBuy", "融资买入", "buy"},
        Word{"MarginOpening", "融资开仓", "buy"}, Word{"ClearedBuy", "证券买入清算", "buy"},
        Word{"NamedBuy", "证券买入:分红股份", "buy"}, Word{"Sell", "卖", "sell"},
        Word{"NamedSell", "证券卖出(浦发银行)", "sell"}, Word{"ClearedSell", "证券卖出清算", "sell"},
        Word{"SellToRepay", "卖券还款", "sell"}, Word{"ShortSale", "融券卖出", "short sales"},
        Word{"Cover", "还券买入", "short sales"}, Word{"BuyToCover", "买券还券", "short sales"},
        Word{"CancelledBuy", "撤买", "cancellations"}, Word{"CancelledPurchase", "撤销买入", "cancellations"},
        Word{"AllotmentNumbers", "申购配号", "allotment numbers"}, Word{"NewShares", "新股入帐", "allotment"},
        Word{"Drawn", "中签缴款", "allotment"}, Word{"Rights", "配股缴款", "allotment"},
        Word{"Bonus", "红股入账", "bonus"}, Word{"Capitalised", "转增股份", "bonus"},
        Word{"Split", "份额拆分", "bonus"}, Word{"CollateralIn", "担保品划入", "in"},
        Word{"CollateralOut", "担保品划出", "out"}, Word{"CustodyIn", "转托管转入", "in"},
        Word{"Converted", "债转股入", "in"}, Word{"Bound", "指定交易", "custody moves"},
        Word{"Repo", "质押回购拆出", "repo"}, Word{"DividendTax", "股息红利税补缴", "dividend tax"},
        Word{"Transfer", "银行转证券", "bank transfers"}, Word{"Unknown", "不详", "unknown"},
        Word{"CustodyEitherWay", "托管", "unknown"}),
    ByName());

} // namespace TradeModule
