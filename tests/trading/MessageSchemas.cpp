#include "tests/trading/MessageSchemas.h"

#include "tradechartobject/common/OrderStatusTable.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/Market.h"
#include "trading/ModuleVocabulary.h"
#include "trading/ResultColumns.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <limits>

using namespace Trading;

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

QJsonObject typed(const char *type)
{
    return {{QStringLiteral("type"), text(type)}};
}

QJsonObject pattern(const char *expression)
{
    QJsonObject schema = typed("string");
    schema[QStringLiteral("pattern")] = text(expression);
    return schema;
}

QJsonObject oneOf(const QJsonArray &words)
{
    return {{QStringLiteral("enum"), words}};
}

// The words of each list, from where the programs have them

/// A direction code has two characters.
QJsonArray directionCodes()
{
    QJsonArray codes;
    for (char first = '!'; first <= '~'; ++first) {
        for (char second = '!'; second <= '~'; ++second) {
            const QString code = QString(QLatin1Char(first)) + QLatin1Char(second);
            if (!TradeChart::toBsFlag(code).isEmpty()) {
                codes.append(code);
            }
        }
    }
    return codes;
}

QJsonArray statusCodes()
{
    QJsonArray codes;
    for (const auto &row : TradeChart::OrderStatusTable()) {
        codes.append(QString(row.code));
    }
    return codes;
}

QJsonArray commands()
{
    QJsonArray names;
    for (const MessageRow &message : messageTable()) {
        if (message.role == MessageRole::Answer) {
            names.append(text(message.command));
        }
    }
    return names;
}

QJsonArray listsOfResults()
{
    QJsonArray words;
    for (const ResultGroup group : resultGroups()) {
        words.append(wordOf(group));
    }
    return words;
}

QJsonArray columnsOfResults()
{
    QJsonArray keys;
    for (int place = 0; place <= static_cast<int>(ResultField::Method); ++place) {
        keys.append(text(columnOf(static_cast<ResultField>(place)).key));
    }
    return keys;
}

QJsonArray marketNumbers()
{
    return {marketNumber(Market::Shanghai), marketNumber(Market::Shenzhen)};
}

QJsonArray marketWords()
{
    return {marketLetters(Market::Shanghai), marketLetters(Market::Shenzhen)};
}

QJsonArray anyMarkets()
{
    QJsonArray all = marketNumbers();
    for (const QJsonValue &word : marketWords()) {
        all.append(word);
    }
    return all;
}

/// The digits of 1 to 2147483647, which is what an int holds.
#define POSITIVE_INT                                                                                         \
    "[1-9][0-9]{0,8}|1[0-9]{9}|20[0-9]{8}|21[0-3][0-9]{7}|214[0-6][0-9]{6}|2147[0-3][0-9]{5}|"               \
    "21474[0-7][0-9]{4}|214748[0-2][0-9]{3}|2147483[0-5][0-9]{2}|21474836[0-3][0-9]|214748364[0-7]"

QJsonObject schemaOfText(Form form)
{
    switch (form) {
    case Form::Any:
        return typed("string");
    case Form::Filled:
        return {{QStringLiteral("type"), QStringLiteral("string")}, {QStringLiteral("minLength"), 1}};
    case Form::Day:
        return pattern("^[0-9]{4}(0[1-9]|1[0-2])(0[1-9]|[12][0-9]|3[01])$");
    case Form::Time:
        return pattern("^([01]?[0-9]|2[0-3])[0-5][0-9][0-5][0-9][0-9]{2}$");
    case Form::QuoteTime:
        return pattern("^([01]?[0-9]|2[0-3])[0-5][0-9]([0-5][0-9]([0-9]{2})?)?$");
    case Form::Price:
        return pattern("^[0-9]+(\\.[0-9]+)?$");
    case Form::Cost:
        return pattern("^(nan|-?[0-9]+(\\.[0-9]+)?)$");
    case Form::Amount:
        return pattern("^-?[0-9]+(\\.[0-9]+)?$");
    case Form::Whole:
        return pattern("^0*(0|" POSITIVE_INT ")$");
    case Form::Positive:
        return pattern("^0*(" POSITIVE_INT ")$");
    case Form::ClientNumber:
        return pattern("^[ -~]{1,64}$");
    case Form::Instant:
        return pattern("^[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}(\\.[0-9]+)?Z$");
    case Form::TradeSide:
        return oneOf({text(TradeChart::BSFlag::BUY), text(TradeChart::BSFlag::SELL)});
    case Form::OrderSide:
        return oneOf(directionCodes());
    case Form::OrderStatus:
        return oneOf(statusCodes());
    case Form::MarketLetters:
        return oneOf(marketWords());
    case Form::MarketNumber:
        return oneOf(marketNumbers());
    case Form::AnyMarket:
        return oneOf(anyMarkets());
    case Form::Command:
        return oneOf(commands());
    case Form::ResultGroup:
        return oneOf(listsOfResults());
    case Form::ResultColumn:
        return oneOf(columnsOfResults());
    case Form::CostMethod:
        return oneOf({text(CostWords::AVERAGE), text(CostWords::DILUTED), text(CostWords::FIFO)});
    case Form::Replacement:
        return oneOf({text(ReplacementWords::WAITING), text(ReplacementWords::PLACED),
                      text(ReplacementWords::DEALT), text(ReplacementWords::FAILED)});
    case Form::FailureKind:
        return typed("string");
    }
    Q_UNREACHABLE();
}

QJsonObject wholeFrom(int least, int most)
{
    return {{QStringLiteral("type"), QStringLiteral("integer")},
            {QStringLiteral("minimum"), least},
            {QStringLiteral("maximum"), most}};
}

QJsonObject schemaOfNumber(Form form)
{
    constexpr int firstDay = 19000101;
    constexpr int lastDay = 99991231;
    QJsonObject number = typed("number");
    if (form == Form::Price) {
        number[QStringLiteral("minimum")] = 0;
    } else if (form == Form::Whole || form == Form::Positive) {
        number = wholeFrom(form == Form::Positive ? 1 : 0, std::numeric_limits<int>::max());
    } else if (form == Form::FailureKind) {
        number = wholeFrom(0, lastFailureKind);
    } else if (form == Form::Day) {
        number = wholeFrom(firstDay, lastDay);
    }
    return number;
}

QJsonObject listOf(const QJsonObject &items)
{
    return {{QStringLiteral("type"), QStringLiteral("array")}, {QStringLiteral("items"), items}};
}

// Keys

QString placeOf(const RecordShape &shape)
{
    return text(shape.title).replace(u' ', u'-');
}

QJsonObject valueSchema(const MessageKey &key)
{
    if (key.inside == nullptr) {
        return schemaOf(key.type, key.form);
    }
    const QJsonObject reference{
        {QStringLiteral("$ref"), QStringLiteral("#/definitions/%1").arg(placeOf(*key.inside))}};
    return key.type == JsonType::Rows ? listOf(reference) : reference;
}

/// Beside a reference no other word counts, so it stands in a list of one.
QJsonObject besideOthers(const QJsonObject &schema)
{
    return schema.contains(QStringLiteral("$ref"))
               ? QJsonObject{{QStringLiteral("allOf"), QJsonArray{schema}}}
               : schema;
}

/// What is not required may be null or an empty text.
QJsonObject keySchema(const MessageKey &key)
{
    QJsonObject schema = besideOthers(valueSchema(key));
    if (!key.isRequired) {
        schema = {{QStringLiteral("anyOf"),
                   QJsonArray{schema, oneOf({QStringLiteral(""), QJsonValue(QJsonValue::Null)})}}};
    }
    schema[QStringLiteral("description")] = text(key.meaning);
    schema[QStringLiteral("x-when-wrong")] = text(wordOf(key.whenWrong));
    return schema;
}

QJsonObject recordSchema(const MessageKeys &keys)
{
    QJsonObject properties;
    QJsonArray needed;
    for (const MessageKey &key : keys) {
        properties[text(key.key)] = keySchema(key);
        if (key.isRequired) {
            needed.append(text(key.key));
        }
    }
    QJsonObject schema = typed("object");
    schema[QStringLiteral("properties")] = properties;
    schema[QStringLiteral("required")] = needed;
    return schema;
}

/// The shapes that stand in a record, and those in them.
void appendDefinitions(const MessageKeys &keys, QJsonObject *definitions)
{
    for (const MessageKey &key : keys) {
        if (key.inside != nullptr) {
            (*definitions)[placeOf(*key.inside)] = recordSchema(key.inside->keys);
            appendDefinitions(key.inside->keys, definitions);
        }
    }
}

// Messages

/// A property that says what the message is: this value and no other.
void fix(const char *key, const QJsonValue &value, QJsonObject *schema)
{
    QJsonObject properties = schema->value(QStringLiteral("properties")).toObject();
    QJsonObject property = properties.value(text(key)).toObject();
    property.remove(QStringLiteral("enum"));
    property[QStringLiteral("const")] = value;
    properties[text(key)] = property;
    (*schema)[QStringLiteral("properties")] = properties;
}

void forbid(const char *key, QJsonObject *schema)
{
    QJsonObject properties = schema->value(QStringLiteral("properties")).toObject();
    properties[text(key)] = false;
    (*schema)[QStringLiteral("properties")] = properties;
}

QJsonObject failureSchema()
{
    QJsonObject schema = recordSchema(findMessage(MessageRole::Failure)->keys);
    fix(TradeChart::TradeKeyFields::SUCCESS, false, &schema);
    forbid(TradeChart::TradeKeyFields::DATA, &schema);
    return schema;
}

QJsonObject answerSchema(const QJsonObject &ofSuccess)
{
    const QString success = text(TradeChart::TradeKeyFields::SUCCESS);
    const QJsonObject isFailure{
        {QStringLiteral("properties"), QJsonObject{{success, QJsonObject{{QStringLiteral("const"), false}}}}},
        {QStringLiteral("required"), QJsonArray{success}}};
    return {{QStringLiteral("if"), isFailure},
            {QStringLiteral("then"), failureSchema()},
            {QStringLiteral("else"), ofSuccess}};
}

QJsonObject bodyOf(const MessageRow &message)
{
    QJsonObject body = recordSchema(message.keys);
    if (message.command != nullptr) {
        fix(TradeChart::TradeKeyFields::CMD, text(message.command), &body);
    }
    switch (message.role) {
    case MessageRole::Question:
        forbid(TradeChart::TradeKeyFields::SUCCESS, &body); // else it is an answer
        return body;
    case MessageRole::Answer:
        return answerSchema(body);
    case MessageRole::Failure:
        return failureSchema();
    case MessageRole::Notification:
    case MessageRole::Presence:
    case MessageRole::Quote:
        return body;
    }
    Q_UNREACHABLE();
}

QByteArray schemaFile(const MessageRow &message)
{
    QJsonObject schema = bodyOf(message);
    QJsonObject definitions;
    appendDefinitions(message.keys, &definitions);
    if (!definitions.isEmpty()) {
        schema[QStringLiteral("definitions")] = definitions;
    }
    schema[QStringLiteral("$schema")] = QStringLiteral("http://json-schema.org/draft-07/schema#");
    schema[QStringLiteral("title")] = schemaName(message);
    schema[QStringLiteral("description")] = text(message.meaning);
    return QJsonDocument(schema).toJson();
}

} // namespace

QString schemaName(const MessageRow &message)
{
    switch (message.role) {
    case MessageRole::Question:
        return text(message.command) + QStringLiteral(".question");
    case MessageRole::Answer:
        return text(message.command) + QStringLiteral(".answer");
    case MessageRole::Failure:
        return QStringLiteral("failure.answer");
    case MessageRole::Notification:
    case MessageRole::Presence:
    case MessageRole::Quote:
        return text(message.topic);
    }
    Q_UNREACHABLE();
}

QJsonObject schemaOf(JsonType type, Form form)
{
    switch (type) {
    case JsonType::Text:
        return schemaOfText(form);
    case JsonType::Number:
        return schemaOfNumber(form);
    case JsonType::Flag:
        return typed("boolean");
    case JsonType::Texts:
        return listOf(typed("string"));
    case JsonType::Record:
        return typed("object");
    case JsonType::Rows:
        return listOf(typed("object"));
    }
    Q_UNREACHABLE();
}

QMap<QString, QByteArray> messageSchemas()
{
    QMap<QString, QByteArray> files;
    for (const MessageRow &message : messageTable()) {
        files[schemaName(message) + QStringLiteral(".json")] = schemaFile(message);
    }
    return files;
}
