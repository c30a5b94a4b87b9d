#include "trademodule/ProgramLanguage.h"

#include <gtest/gtest.h>

namespace TradeModule {

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

} // namespace

TEST(ProgramLanguage, FollowsTheFirstLocaleThatIsSet)
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
        EXPECT_EQ(ProgramLanguage::ofLocale().toStdString(), row.word) << row.all << row.messages << row.lang;
    }
}

TEST(ProgramLanguage, TranslatesOnlyWhileItIsChinese)
{
    {
        ProgramLanguage language;
        EXPECT_TRUE(language.set(QStringLiteral("zh")));
        EXPECT_EQ(translated("quantity"), QStringLiteral(u"数量"));
        EXPECT_TRUE(language.set(QStringLiteral("en")));
        EXPECT_EQ(translated("quantity"), QStringLiteral("quantity"));
        EXPECT_TRUE(language.set(QStringLiteral("zh")));
    }
    EXPECT_EQ(translated("quantity"), QStringLiteral("quantity"));
}

TEST(ProgramLanguage, StaysAsItIsForAWordItDoesNotKnow)
{
    ProgramLanguage language;
    language.set(QStringLiteral("zh"));

    EXPECT_FALSE(language.set(QStringLiteral("xx")));

    EXPECT_EQ(translated("quantity"), QStringLiteral(u"数量"));
}

} // namespace TradeModule
