// Texts of overlays without the amounts of the account.
#include "terminal/plugin/HiddenAmounts.h"
#include "tests/support/ByName.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

struct TextWithAmounts
{
    const char *name;
    const char *shown;
    const char *hidden;
};

class HiddenAmounts : public ::testing::TestWithParam<TextWithAmounts>
{
};

TEST_P(HiddenAmounts, AreHiddenAndPricesAreNot)
{
    EXPECT_EQ(withoutAmounts(QString::fromUtf8(GetParam().shown)).toStdString(), GetParam().hidden);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, HiddenAmounts,
    ::testing::Values(
        TextWithAmounts{"cost", "持仓成本:1890.058", "持仓成本:***"},
        TextWithAmounts{"trade", "买入\t09:30:15\t成交价:10.50\t成交量:300",
                        "买入\t09:30:15\t成交价:10.50\t成交量:***"},
        TextWithAmounts{
            "order",
            "买入[测试]\n状态:部成(未成可撤)\n编号:7\n委托时间:09:32:05\n委托价格:9.500\n委托数量:300\n"
            "成交均价:9.480\n成交数量:100\n可撤数量:200\n委托日期:20240105",
            "买入[测试]\n状态:部成(未成可撤)\n编号:7\n委托时间:09:32:05\n委托价格:9.500\n委托数量:***\n"
            "成交均价:9.480\n成交数量:***\n可撤数量:***\n委托日期:20240105"},
        TextWithAmounts{"cancelledPart", "已撤数量:12345\n委托日期:20240105",
                        "已撤数量:***\n委托日期:20240105"},
        TextWithAmounts{"nothing", "撤单成功", "撤单成功"}),
    ByName());

} // namespace
} // namespace Terminal
