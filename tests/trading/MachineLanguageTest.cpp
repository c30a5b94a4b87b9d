#include "trading/MachineLanguage.h"

#include <gtest/gtest.h>

namespace Trading {
namespace {

struct LocaleRow
{
    const char *all;
    const char *messages;
    const char *lang;
    const char *word;
};

void setLocale(const LocaleRow &row)
{
    qputenv("LC_ALL", row.all);
    qputenv("LC_MESSAGES", row.messages);
    qputenv("LANG", row.lang);
}

TEST(MachineLanguage, FollowsTheFirstLocaleThatIsSet)
{
    for (const LocaleRow &row : {LocaleRow{"", "", "", "en"},
                                 {"", "", "zh_CN.UTF-8", "zh"},
                                 {"", "", "zh_TW", "zh"},
                                 {"", "", "C.UTF-8", "en"},
                                 {"", "zh_CN.GB18030", "en_US.UTF-8", "zh"},
                                 {"", "en_US.UTF-8", "zh_CN.UTF-8", "en"},
                                 {"C", "zh_CN.UTF-8", "zh_CN.UTF-8", "en"},
                                 {"zh_CN.UTF-8", "C", "C", "zh"}}) {
        setLocale(row);
        EXPECT_EQ(machineLanguage().toStdString(), row.word) << row.all << row.messages << row.lang;
    }
}

} // namespace
} // namespace Trading
