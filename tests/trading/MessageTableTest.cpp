// The one table of messages, and the page that is made from it.
#include "trading/MessageTable.h"
#include "tests/trading/MessagePage.h"

#include <gmock/gmock.h>

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

TEST(MessageTablePage, HasTheTablesOfTheCode)
{
    QFile file(QStringLiteral(TRADECHART_SOURCE_DIR "/docs/messages.md"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray page = file.readAll();
    EXPECT_EQ(page.toStdString(), withMessageTables(page).toStdString())
        << "scripts/message-page writes it anew";
}

TEST(MessageTablePage, IsLeftAloneWithoutMarks)
{
    EXPECT_TRUE(withMessageTables("# A page\n").isEmpty());
}

} // namespace
} // namespace Trading
