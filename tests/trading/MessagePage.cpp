#include "tests/trading/MessagePage.h"

#include "trading/MessageTable.h"

#include <QString>
#include <QStringList>

#include <algorithm>

using namespace Trading;

namespace {

const QByteArray firstMark = "<!-- The tables from here on are made by scripts/message-page. -->\n";
const QByteArray lastMark = "<!-- The tables end here. -->\n";

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

QString code(const char *word)
{
    return QStringLiteral("`%1`").arg(text(word));
}

QString tableRow(const QStringList &cells)
{
    return QStringLiteral("| %1 |\n").arg(cells.join(QStringLiteral(" | ")));
}

QString tableHead(const QStringList &titles)
{
    QStringList rules;
    std::fill_n(std::back_inserter(rules), titles.size(), QStringLiteral("---"));
    return tableRow(titles) + QStringLiteral("|%1|\n").arg(rules.join(QLatin1Char('|')));
}

QString heading(const char *title)
{
    return QStringLiteral("\n### %1\n\n").arg(text(title));
}

/// Where a heading of the page is found.
QString linkTo(const char *title)
{
    return QStringLiteral("[%1](#%2)").arg(text(title), text(title).toLower().replace(u' ', u'-'));
}

// Keys

QString valueOf(const MessageKey &key)
{
    const QString form = text(wordOf(key.form));
    const QString type = key.inside != nullptr
                             ? QStringLiteral("%1: %2").arg(text(wordOf(key.type)), linkTo(key.inside->title))
                             : text(wordOf(key.type));
    return form.isEmpty() ? type : type + QStringLiteral(", ") + form;
}

QStringList cellsOf(const MessageKey &key, const QString &isRequired)
{
    return {code(key.key), valueOf(key), isRequired, text(wordOf(key.whenWrong)), text(key.meaning)};
}

QString keyTable(const MessageKeys &keys)
{
    QString table = tableHead({QStringLiteral("key"), QStringLiteral("value"), QStringLiteral("required"),
                               QStringLiteral("when wrong"), QStringLiteral("meaning")});
    for (const MessageKey &key : keys) {
        table += tableRow(cellsOf(key, key.isRequired ? QStringLiteral("yes") : QString()));
    }
    return table;
}

const MessageKey *findKey(const MessageKeys &keys, const char *name)
{
    const auto key = std::find_if(keys.begin(), keys.end(), [name](const MessageKey &candidate) {
        return qstrcmp(candidate.key, name) == 0;
    });
    return key == keys.end() ? nullptr : &*key;
}

// Messages of one role

using Messages = std::vector<const MessageRow *>;

Messages messagesOf(MessageRole role)
{
    Messages messages;
    for (const MessageRow &row : messageTable()) {
        if (row.role == role) {
            messages.push_back(&row);
        }
    }
    return messages;
}

bool isShared(const char *key, const Messages &messages)
{
    return std::all_of(messages.begin(), messages.end(),
                       [key](const MessageRow *message) { return findKey(message->keys, key) != nullptr; });
}

QString commandsOf(const Messages &messages)
{
    QStringList commands;
    for (const MessageRow *message : messages) {
        commands.append(code(message->command));
    }
    return commands.join(QStringLiteral(", "));
}

/// Of a key that all messages have: always, never, or of which it is required, whichever are fewer.
QString whoRequires(const char *key, const Messages &messages)
{
    Messages requiring;
    Messages others;
    for (const MessageRow *message : messages) {
        (findKey(message->keys, key)->isRequired ? requiring : others).push_back(message);
    }
    if (requiring.empty() || others.empty()) {
        return others.empty() ? QStringLiteral("yes") : QString();
    }
    return requiring.size() <= others.size() ? QStringLiteral("by ") + commandsOf(requiring)
                                             : QStringLiteral("but by ") + commandsOf(others);
}

/// Who requires a key tells best what comes of it.
const MessageKey &strictest(const char *key, const Messages &messages)
{
    const auto strict = std::find_if(messages.begin(), messages.end(), [key](const MessageRow *message) {
        return findKey(message->keys, key)->isRequired;
    });
    return *findKey((strict == messages.end() ? messages.front() : *strict)->keys, key);
}

QString sharedKeys(const Messages &messages)
{
    QString table = keyTable({});
    for (const MessageKey &key : messages.front()->keys) {
        if (key.inside == nullptr && isShared(key.key, messages)) {
            table += tableRow(cellsOf(strictest(key.key, messages), whoRequires(key.key, messages)));
        }
    }
    return table;
}

QString ownKeys(const Messages &messages)
{
    QString table =
        tableHead({QStringLiteral("`cmd`"), QStringLiteral("key"), QStringLiteral("value"),
                   QStringLiteral("required"), QStringLiteral("when wrong"), QStringLiteral("meaning")});
    for (const MessageRow *message : messages) {
        for (const MessageKey &key : message->keys) {
            if (!isShared(key.key, messages)) {
                table += tableRow(QStringList(code(message->command)) +
                                  cellsOf(key, key.isRequired ? QStringLiteral("yes") : QString()));
            }
        }
    }
    return table;
}

QString ownKeyNames(const MessageRow &message, const Messages &messages)
{
    QStringList names;
    for (const MessageKey &key : message.keys) {
        if (!isShared(key.key, messages)) {
            names.append(code(key.key));
        }
    }
    return names.join(QStringLiteral(", "));
}

QString dataOf(const MessageRow &answer)
{
    const MessageKey *const data = findKey(answer.keys, "data");
    return QStringLiteral("%1: %2").arg(text(wordOf(data->type)), linkTo(data->inside->title));
}

// The page

QString commandTable()
{
    const Messages questions = messagesOf(MessageRole::Question);
    QString table =
        tableHead({QStringLiteral("`cmd`"), QStringLiteral("asks for"),
                   QStringLiteral("own keys of the question"), QStringLiteral("`data` of the answer")});
    for (const MessageRow *question : questions) {
        table +=
            tableRow({code(question->command), text(question->meaning), ownKeyNames(*question, questions),
                      dataOf(*findMessage(MessageRole::Answer, text(question->command)))});
    }
    return table;
}

void appendShape(const RecordShape &shape, QStringList *done, QString *tables)
{
    if (done->contains(text(shape.title))) {
        return;
    }
    done->append(text(shape.title));
    *tables += heading(shape.title) + keyTable(shape.keys);
    for (const MessageKey &key : shape.keys) {
        if (key.inside != nullptr) {
            appendShape(*key.inside, done, tables);
        }
    }
}

QString shapeTables()
{
    QString tables;
    QStringList done;
    for (const MessageRow *answer : messagesOf(MessageRole::Answer)) {
        appendShape(*findKey(answer->keys, "data")->inside, &done, &tables);
    }
    return tables;
}

QString unaskedTable(const char *title, MessageRole role)
{
    const MessageRow &message = *messagesOf(role).front();
    return heading(title) +
           QStringLiteral("Topic `%1`: %2.\n\n").arg(text(message.topic), text(message.meaning)) +
           keyTable(message.keys);
}

QString allTables()
{
    const Messages questions = messagesOf(MessageRole::Question);
    const Messages answers = messagesOf(MessageRole::Answer);
    return heading("Commands") + commandTable() + heading("Every question") + sharedKeys(questions) +
           heading("Own keys of questions") + ownKeys(questions) + heading("Every answer") +
           sharedKeys(answers) + heading("Own keys of answers") + ownKeys(answers) + shapeTables() +
           unaskedTable("A failure", MessageRole::Failure) +
           unaskedTable("A notification", MessageRole::Notification) +
           unaskedTable("A presence", MessageRole::Presence) + unaskedTable("A quote", MessageRole::Quote) +
           QStringLiteral("\n");
}

} // namespace

QByteArray withMessageTables(const QByteArray &page)
{
    const int first = page.indexOf(firstMark);
    const int last = page.indexOf(lastMark);
    if (first < 0 || last < first) {
        return {};
    }
    return page.left(first + firstMark.size()) + allTables().toUtf8() + page.mid(last);
}
