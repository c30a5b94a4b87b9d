#include "trademodule/ProgramLanguage.h"

#include <gtest/gtest.h>

namespace TradeModule {

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
