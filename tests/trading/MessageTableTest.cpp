// The one table of messages, and the page that is made from it.
#include "trading/MessageTable.h"
#include "tests/trading/MessageFiles.h"
#include "tests/trading/MessagePage.h"
#include "tests/trading/MessageSchemas.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QSet>

namespace Trading {
namespace {

TEST(MessageTable, HasAnAnswerForEveryQuestion)
{
    for (const MessageRow &row : messageTable()) {
        if (row.role == MessageRole::Question) {
            EXPECT_NE(findMessage(MessageRole::Answer, QLatin1String(row.command)), nullptr) << row.command;
        }
    }
}

TEST(MessageTable, HasEachKeyOfAMessageOnce)
{
    for (const MessageRow &row : messageTable()) {
        QSet<QByteArray> keys;
        for (const MessageKey &key : row.keys) {
            EXPECT_FALSE(keys.contains(key.key)) << row.meaning << ": " << key.key;
            keys.insert(key.key);
        }
    }
}

TEST(MessageTable, KnowsTheMessagesThatNoCommandTellsApart)
{
    for (const MessageRole role : {MessageRole::Notification, MessageRole::Presence, MessageRole::Quote}) {
        EXPECT_NE(findMessage(role), nullptr);
    }
}

TEST(MessageTable, HasNoMessageOfAnUnknownCommand)
{
    EXPECT_EQ(findMessage(MessageRole::Answer, QStringLiteral("Weather")), nullptr);
}

TEST(MessageTable, SaysWhatComesOfEveryRequiredKeyThatIsWrong)
{
    for (const MessageRow &row : messageTable()) {
        for (const MessageKey &key : row.keys) {
            EXPECT_TRUE(!key.isRequired || key.whenWrong != WhenWrong::Nothing) << key.key;
        }
    }
}

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(MessageTableFiles, AreThoseOfTheCode)
{
    const QString tree = QStringLiteral(TRADECHART_SOURCE_DIR);
    const auto files = messageFiles(tree);
    EXPECT_GT(files.size(), 20);
    for (auto file = files.begin(); file != files.end(); ++file) {
        EXPECT_EQ(contentsOf(tree + QLatin1Char('/') + file.key()).toStdString(), file->toStdString())
            << file.key().toStdString() << ": scripts/message-page writes it anew";
    }
}

TEST(MessageTableFiles, AreAllSchemasThatThereAre)
{
    const QDir schemas(QStringLiteral(TRADECHART_SOURCE_DIR "/schemas"));
    for (const QString &name : schemas.entryList({QStringLiteral("*.json")})) {
        EXPECT_TRUE(messageSchemas().contains(name)) << name.toStdString() << " is of no message any more";
    }
}

TEST(MessageTablePage, IsLeftAloneWithoutMarks)
{
    EXPECT_TRUE(withMessageTables("# A page\n").isEmpty());
}

} // namespace
} // namespace Trading
