#include "tests/trademodule/check/support/Mutation.h"

#include "trading/MessageTable.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QMap>
#include <QSet>

#include <algorithm>

namespace TradeModule {

namespace {

const QString everyRow = QStringLiteral("*");
const QString failure = QStringLiteral("failure");

/// Stands in the place of a key that is to be written a second time, which no tree of values can hold.
const QString secondTime = QStringLiteral("second-time-");

const char *wordOf(Mutation::Way way)
{
    static const QMap<int, const char *> words = {
        {Mutation::Dropped, "dropped"},
        {Mutation::Retyped, "retyped"},
        {Mutation::Emptied, "emptied"},
        {Mutation::OutOfRange, "out of range"},
        {Mutation::DoubledKey, "doubled"},
        {Mutation::Silent, "never said"},
        {Mutation::DoubledMessage, "said twice"},
        {Mutation::Late, "late"},
        {Mutation::NoJson, "cut off"},
    };
    return words[way];
}

QJsonValue retyped(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::String:
        return value.toString().toDouble();
    case QJsonValue::Array:
        return QJsonObject();
    case QJsonValue::Object:
        return QJsonArray{value};
    default:
        return value.toVariant().toString();
    }
}

QJsonValue emptied(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::String:
        return QString();
    case QJsonValue::Array:
        return QJsonArray();
    case QJsonValue::Object:
        return QJsonObject();
    default:
        return QJsonValue::Null;
    }
}

QJsonValue outOfRange(const QJsonValue &value)
{
    const QString text = value.toString();
    bool isNumber = false;
    text.toDouble(&isNumber);
    switch (value.type()) {
    case QJsonValue::String:
        return isNumber ? QStringLiteral("-inf") : QStringLiteral("?!");
    case QJsonValue::Bool:
        return !value.toBool();
    case QJsonValue::Array:
        return QJsonArray{7};
    case QJsonValue::Double:
        return -1;
    default:
        return QJsonObject{{QStringLiteral("?!"), 7}};
    }
}

void change(const QString &key, Mutation::Way way, QJsonObject *object)
{
    const QJsonValue value = object->value(key);
    switch (way) {
    case Mutation::Dropped:
        return object->remove(key);
    case Mutation::Retyped:
        return void(object->insert(key, retyped(value)));
    case Mutation::Emptied:
        return void(object->insert(key, emptied(value)));
    case Mutation::OutOfRange:
        return void(object->insert(key, outOfRange(value)));
    case Mutation::DoubledKey:
        return void(object->insert(secondTime + key, value));
    default:
        return;
    }
}

QJsonObject changed(QJsonObject object, const QStringList &path, Mutation::Way way)
{
    const QString &key = path.first();
    if (!object.contains(key)) {
        return object;
    }
    if (path.size() == 1) {
        change(key, way, &object);
    } else if (path[1] == everyRow) {
        QJsonArray rows;
        for (const QJsonValue &row : object[key].toArray()) {
            rows.append(changed(row.toObject(), path.mid(2), way));
        }
        object[key] = rows;
    } else {
        object[key] = changed(object[key].toObject(), path.mid(1), way);
    }
    return object;
}

const Trading::MessageRow *rowOf(const QString &kind)
{
    using namespace Trading;
    if (const MessageRow *const answer = findMessage(MessageRole::Answer, kind)) {
        return answer;
    }
    for (const MessageRole role : {MessageRole::Notification, MessageRole::Presence}) {
        if (kind == QLatin1String(findMessage(role)->topic)) {
            return findMessage(role);
        }
    }
    return findMessage(MessageRole::Failure);
}

/// Any text is right under such a key, so none is out of range.
bool hasFreeText(const Mutation &mutation)
{
    const Trading::MessageKey *const key = mutation.key();
    return key != nullptr && key->type == Trading::JsonType::Text && key->form == Trading::Form::Any;
}

void collectPaths(const QJsonObject &object, const QStringList &way, QSet<QStringList> *paths)
{
    for (auto member = object.begin(); member != object.end(); ++member) {
        const QStringList path = way + QStringList{member.key()};
        paths->insert(path);
        if (member->isObject()) {
            collectPaths(member->toObject(), path, paths);
        }
        for (const QJsonValue &row : member->toArray()) {
            collectPaths(row.toObject(), path + QStringList{everyRow}, paths);
        }
    }
}

} // namespace

const Trading::MessageKey *Mutation::key() const
{
    const Trading::MessageKeys *keys = &rowOf(kind)->keys;
    const Trading::MessageKey *found = nullptr;
    for (const QString &step : path) {
        if (step == everyRow) {
            continue;
        }
        const auto key =
            std::find_if(keys->begin(), keys->end(), [&step](const Trading::MessageKey &candidate) {
                return step == QLatin1String(candidate.key);
            });
        found = key == keys->end() ? nullptr : &*key;
        if (found == nullptr || found->inside == nullptr) {
            break;
        }
        keys = &found->inside->keys;
    }
    return found;
}

std::string Mutation::text() const
{
    return (kind + QLatin1Char(' ') + path.join(QLatin1Char('/')) + QStringLiteral(": ")).toStdString() +
           wordOf(way);
}

QByteArray mutated(const QJsonObject &message, const Mutation &mutation)
{
    QByteArray json =
        QJsonDocument(changed(message, mutation.path, mutation.way)).toJson(QJsonDocument::Compact);
    return json.replace(secondTime.toLatin1(), QByteArray());
}

QVector<Said> Mutation::applied(const QVector<Said> &said) const
{
    constexpr std::chrono::seconds tooLong(4);
    QVector<Said> changed;
    for (Said one : said) {
        const bool isMeant = one.kind == kind;
        if (isMeant && way == Silent) {
            continue;
        }
        if (isMeant && way == Late) {
            one.after += tooLong;
        } else if (isMeant && way == NoJson) {
            one.payload.chop(1);
        } else if (isMeant && way == DoubledMessage) {
            changed.append(one);
        } else if (isMeant) {
            one.payload = mutated(QJsonDocument::fromJson(one.payload).object(), *this);
        }
        changed.append(one);
    }
    return changed;
}

QString kindOf(const Said &said)
{
    const QJsonObject message = QJsonDocument::fromJson(said.payload).object();
    if (message[QStringLiteral("success")] == QJsonValue(false)) {
        return failure;
    }
    const QString command = message[QStringLiteral("cmd")].toString();
    return command.isEmpty() ? QString::fromUtf8(said.topic) : command;
}

namespace {

bool isSame(const Said &a, const Said &b)
{
    return a.payload == b.payload ||
           (a.payload.size() == b.payload.size() &&
            QJsonDocument::fromJson(a.payload) == QJsonDocument::fromJson(b.payload));
}

/// To empty what is empty is no fault.
void appendIfItChanges(const Mutation &mutation, const QVector<Said> &said, QVector<Mutation> *mutations)
{
    const QVector<Said> after = mutation.applied(said);
    if (!std::equal(said.begin(), said.end(), after.begin(), after.end(), isSame)) {
        mutations->append(mutation);
    }
}

} // namespace

QVector<Mutation> mutationsOf(const QVector<Said> &said)
{
    QMap<QString, QSet<QStringList>> paths;
    for (const Said &one : said) {
        collectPaths(QJsonDocument::fromJson(one.payload).object(), {}, &paths[one.kind]);
    }
    QVector<Mutation> mutations;
    for (auto kind = paths.begin(); kind != paths.end(); ++kind) {
        for (const QStringList &path : qAsConst(*kind)) {
            for (int way = Mutation::Dropped; way <= Mutation::DoubledKey; ++way) {
                const Mutation mutation{kind.key(), path, static_cast<Mutation::Way>(way)};
                if (way != Mutation::OutOfRange || !hasFreeText(mutation)) {
                    appendIfItChanges(mutation, said, &mutations);
                }
            }
        }
        for (int way = Mutation::Silent; way <= Mutation::NoJson; ++way) {
            mutations.append({kind.key(), {}, static_cast<Mutation::Way>(way)});
        }
    }
    return mutations;
}

} // namespace TradeModule
