// The Chinese texts of the terminal against the sources that they translate.
#include "tests/support/TranslationFile.h"

#include <QDirIterator>

#include <gmock/gmock.h>

namespace Terminal {
namespace {

QString sources()
{
    return QStringLiteral(TERMINAL_SOURCES);
}

Translations marked()
{
    QStringList files{sources() + QStringLiteral("/../trading/MessageTable.cpp"),
                      sources() + QStringLiteral("/../trading/OrderStatusName.cpp")};
    for (QDirIterator all(sources(), {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                          QDirIterator::Subdirectories);
         all.hasNext();) {
        files.append(all.next());
    }
    return markedTexts(files, {QStringLiteral("tr+=text"), QStringLiteral("tr+=quoted")});
}

Translations chinese()
{
    return readTranslations(sources() + QStringLiteral("/ui/translations/tradeterminal_zh.ts"));
}

TEST(TerminalTranslations, AreThereForEveryText)
{
    const Translations texts = marked();
    EXPECT_GT(texts.size(), 100);
    EXPECT_THAT(missingIn(chinese(), texts), ::testing::IsEmpty());
}

TEST(TerminalTranslations, AreOfTextsThatAreStillThere)
{
    EXPECT_THAT(missingIn(marked(), chinese()), ::testing::IsEmpty());
}

TEST(TerminalTranslations, AreFilledInAndHaveThePlaceholdersOfTheirText)
{
    const Translations translations = chinese();
    for (auto row = translations.begin(); row != translations.end(); ++row) {
        EXPECT_FALSE(row.value().isEmpty()) << row.key().toStdString();
        EXPECT_EQ(placeholders(row.value()), placeholders(row.key())) << row.key().toStdString();
    }
}

} // namespace
} // namespace Terminal
