#include "terminal/data/PinyinInitials.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;

std::vector<QString> initials(const char16_t *name)
{
    const QStringList all = pinyinInitials(QString::fromUtf16(name));
    return {all.begin(), all.end()};
}

TEST(PinyinInitials, AreTheFirstLettersOfTheSyllables)
{
    EXPECT_THAT(initials(u"贵州茅台"), ElementsAre(QStringLiteral("gzmt")));
    EXPECT_THAT(initials(u"中国软件"), ElementsAre(QStringLiteral("zgrj")));
    EXPECT_THAT(initials(u"安琪酵母"), ElementsAre(QStringLiteral("aqjm")));
    EXPECT_THAT(initials(u"宝钢股份"), ElementsAre(QStringLiteral("bggf")));
}

TEST(PinyinInitials, KnowAllReadingsOfACharacter)
{
    EXPECT_THAT(initials(u"平安银行"), Contains(QStringLiteral("payh")));
    EXPECT_THAT(initials(u"重庆啤酒"), Contains(QStringLiteral("cqpj")));
    EXPECT_THAT(initials(u"长安汽车"), Contains(QStringLiteral("caqc")));
    EXPECT_THAT(initials(u"厦门钨业"), Contains(QStringLiteral("xmwy")));
}

TEST(PinyinInitials, KeepLettersAndDigitsAndNothingElse)
{
    EXPECT_THAT(initials(u"*ST海润"), ElementsAre(QStringLiteral("sthr")));
    EXPECT_THAT(initials(u"TCL 科技"), ElementsAre(QStringLiteral("tclkj")));
    EXPECT_THAT(initials(u"…"), ElementsAre());
}

TEST(PinyinInitials, AreAFewForANameOfManyReadings)
{
    EXPECT_LE(pinyinInitials(QString(u'长').repeated(20)).size(), 8);
}

} // namespace
} // namespace Terminal
