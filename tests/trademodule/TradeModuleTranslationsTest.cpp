// The Chinese texts against the sources that they translate.
#include "tests/support/TranslationFile.h"

#include <QDirIterator>
#include <QRegularExpression>

#include <gmock/gmock.h>

namespace TradeModule {

namespace {

QString sources()
{
    return QStringLiteral(TRADEMODULE_SOURCES);
}

Translations chinese()
{
    return readTranslations(sources() + QStringLiteral("/translations/trademodule_zh.ts"));
}

Translations marked()
{
    return markedTexts({sources(), sources() + QStringLiteral("/../trading/ResultColumns.cpp"),
                        sources() + QStringLiteral("/../trading/OrderStatusName.cpp"),
                        sources() + QStringLiteral("/../trading/MessageTable.cpp")},
                       {QStringLiteral("tr+=translated")});
}

} // namespace

TEST(TradeModuleTranslations, AreThereForEveryText)
{
    const Translations texts = marked();

    EXPECT_GT(texts.size(), 100);
    EXPECT_THAT(missingIn(chinese(), texts), testing::IsEmpty());
}

TEST(TradeModuleTranslations, AreOfTextsThatAreStillThere)
{
    EXPECT_THAT(missingIn(marked(), chinese()), testing::IsEmpty());
}

TEST(TradeModuleTranslations, AreFilledInAndHaveThePlaceholdersOfTheirText)
{
    const Translations translations = chinese();
    for (auto row = translations.begin(); row != translations.end(); ++row) {
        EXPECT_FALSE(row.value().isEmpty()) << row.key().toStdString();
        EXPECT_EQ(placeholders(row.value()), placeholders(row.key())) << row.key().toStdString();
    }
}

/// A literal of several words that is thrown, printed or logged is a text for people.
TEST(TradeModuleTranslations, AreAskedForWhereverTheModuleSpeaks)
{
    static const QRegularExpression untranslated(QStringLiteral(
        R"re((throw \w+|warn|print\w*|refuse\w*|arguments)[({][^;"]*QStringLiteral\(\s*"[^"]*[a-z]{2,} [^;]*;)re"
        R"re(|qWarning\(\s*"[^"]*[a-z]{2,} [^;]*;)re"));
    for (QDirIterator files(sources(), {QStringLiteral("*.cpp")}, QDir::Files, QDirIterator::Subdirectories);
         files.hasNext();) {
        const QString path = files.next();
        const auto match = untranslated.match(readText(path));
        EXPECT_FALSE(match.hasMatch()) << path.toStdString() << ": " << match.captured().toStdString();
    }
}

} // namespace TradeModule
