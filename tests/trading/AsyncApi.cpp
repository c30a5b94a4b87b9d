#include "tests/trading/AsyncApi.h"

#include "tests/trading/MessageSchemas.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace Trading;

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

QJsonObject reference(const QString &place)
{
    return {{QStringLiteral("$ref"), place}};
}

// Channels

QString channelOf(MessageRole role)
{
    switch (role) {
    case MessageRole::Question:
        return QStringLiteral("questions");
    case MessageRole::Answer:
    case MessageRole::Failure:
        return QStringLiteral("answers");
    case MessageRole::Notification:
        return QStringLiteral("changes");
    case MessageRole::Presence:
        return QStringLiteral("presence");
    case MessageRole::Quote:
        return QStringLiteral("quotes");
    }
    Q_UNREACHABLE();
}

QString addressOf(const MessageRow &message)
{
    const bool isAnswer = message.role == MessageRole::Answer || message.role == MessageRole::Failure;
    const QString channel = isAnswer                             ? QStringLiteral("{screenId}")
                            : message.role == MessageRole::Quote ? text(Channel::MARKET)
                                                                 : text(Channel::GLOBAL);
    return channel + QLatin1Char('/') + text(message.topic);
}

QString messagePlace(const MessageRow &message)
{
    return QStringLiteral("#/channels/%1/messages/%2").arg(channelOf(message.role), schemaName(message));
}

QJsonObject newChannel(const MessageRow &message)
{
    QJsonObject channel{{QStringLiteral("address"), addressOf(message)}};
    if (channelOf(message.role) == QLatin1String("answers")) {
        const auto meaning = QStringLiteral("The question's screenId, encoded as docs/bus-protocol.md tells. "
                                            "Of a question without one the answer "
                                            "goes to its Response Topic.");
        channel[QStringLiteral("parameters")] =
            QJsonObject{{QStringLiteral("screenId"), QJsonObject{{QStringLiteral("description"), meaning}}}};
    }
    return channel;
}

QJsonObject channels()
{
    QJsonObject all;
    for (const MessageRow &message : messageTable()) {
        const QString name = channelOf(message.role);
        QJsonObject channel = all.contains(name) ? all[name].toObject() : newChannel(message);
        QJsonObject messages = channel[QStringLiteral("messages")].toObject();
        messages[schemaName(message)] =
            reference(QStringLiteral("#/components/messages/%1").arg(schemaName(message)));
        channel[QStringLiteral("messages")] = messages;
        all[name] = channel;
    }
    return all;
}

// What a trading module does

QJsonObject operation(const char *action, const MessageRow &message)
{
    return {
        {QStringLiteral("action"), text(action)},
        {QStringLiteral("channel"), reference(QStringLiteral("#/channels/%1").arg(channelOf(message.role)))},
        {QStringLiteral("summary"), text(message.meaning)},
        {QStringLiteral("messages"), QJsonArray{reference(messagePlace(message))}}};
}

QJsonObject answering(const MessageRow &question)
{
    const MessageRow &answer = *findMessage(MessageRole::Answer, text(question.command));
    QJsonObject answering = operation("receive", question);
    answering[QStringLiteral("reply")] =
        QJsonObject{{QStringLiteral("channel"), reference(QStringLiteral("#/channels/answers"))},
                    {QStringLiteral("messages"), QJsonArray{reference(messagePlace(answer))}}};
    return answering;
}

/// Kept by the broker, which says whether it took it.
QJsonObject announcing(const MessageRow &presence)
{
    QJsonObject announcing = operation("send", presence);
    announcing[QStringLiteral("bindings")] = QJsonObject{
        {QStringLiteral("mqtt"), QJsonObject{{QStringLiteral("qos"), 1}, {QStringLiteral("retain"), true}}}};
    return announcing;
}

QJsonObject operations()
{
    QJsonObject all;
    for (const MessageRow &message : messageTable()) {
        switch (message.role) {
        case MessageRole::Question:
            all[QStringLiteral("answer") + text(message.command)] = answering(message);
            break;
        case MessageRole::Answer:
        case MessageRole::Failure:
            break; // replies
        case MessageRole::Notification:
            all[QStringLiteral("tellChange")] = operation("send", message);
            break;
        case MessageRole::Presence:
            all[QStringLiteral("announce")] = announcing(message);
            break;
        case MessageRole::Quote:
            all[QStringLiteral("takeQuote")] = operation("receive", message);
            break;
        }
    }
    return all;
}

QJsonObject messages()
{
    QJsonObject all;
    for (const MessageRow &message : messageTable()) {
        const QString name = schemaName(message);
        const QJsonObject payload{
            {QStringLiteral("schemaFormat"), QStringLiteral("application/schema+json;version=draft-07")},
            {QStringLiteral("schema"), reference(QStringLiteral("../schemas/%1.json").arg(name))}};
        all[name] = QJsonObject{{QStringLiteral("name"), name},
                                {QStringLiteral("summary"), text(message.meaning)},
                                {QStringLiteral("contentType"), QStringLiteral("application/json")},
                                {QStringLiteral("payload"), payload}};
    }
    return all;
}

QJsonObject wholeApi()
{
    const auto told = QStringLiteral(
        "What a trading module and the terminals on its bus say to one another, as the module sees it. "
        "docs/bus-protocol.md tells where the bus is and how a channel is encoded, docs/messages.md what "
        "comes of "
        "a wrong key.");
    const auto server = QStringLiteral(
        "The broker of the terminal listens on a Unix socket; endpoint.ini may name another, see "
        "docs/bus-protocol.md. With a prefix there, it stands before every address.");
    return {{QStringLiteral("asyncapi"), QStringLiteral("3.0.0")},
            {QStringLiteral("info"), QJsonObject{{QStringLiteral("title"), QStringLiteral("Trading bus")},
                                                 {QStringLiteral("version"), QStringLiteral("1")},
                                                 {QStringLiteral("description"), told}}},
            {QStringLiteral("servers"),
             QJsonObject{
                 {QStringLiteral("bus"), QJsonObject{{QStringLiteral("host"), QStringLiteral("localhost")},
                                                     {QStringLiteral("protocol"), QStringLiteral("mqtt")},
                                                     {QStringLiteral("protocolVersion"), QStringLiteral("5")},
                                                     {QStringLiteral("description"), server}}}}},
            {QStringLiteral("channels"), channels()},
            {QStringLiteral("operations"), operations()},
            {QStringLiteral("components"), QJsonObject{{QStringLiteral("messages"), messages()}}}};
}

// YAML

/// Any JSON text is one in YAML, too.
QByteArray scalar(const QJsonValue &value)
{
    const QByteArray list = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return list.mid(1, list.size() - 2);
}

void write(const QJsonObject &object, int depth, QByteArray *yaml);

void writeList(const QJsonArray &items, int depth, QByteArray *yaml)
{
    for (const QJsonValue &item : items) {
        QByteArray lines;
        write(item.toObject(), depth + 1, &lines);
        *yaml += QByteArray(2 * depth, ' ') + "- " + lines.trimmed() + '\n';
    }
}

void write(const QJsonObject &object, int depth, QByteArray *yaml)
{
    for (auto member = object.begin(); member != object.end(); ++member) {
        *yaml += QByteArray(2 * depth, ' ') + member.key().toUtf8() + ':';
        if (member->isObject()) {
            *yaml += '\n';
            write(member->toObject(), depth + 1, yaml);
        } else if (member->isArray()) {
            *yaml += '\n';
            writeList(member->toArray(), depth + 1, yaml);
        } else {
            *yaml += ' ' + scalar(member.value()) + '\n';
        }
    }
}

} // namespace

QByteArray asyncApi()
{
    QByteArray yaml = "# Made by scripts/message-page from the table of messages.\n";
    write(wholeApi(), 0, &yaml);
    return yaml;
}
