#include "trademodule/check/AnswerRules.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/ProgramLanguage.h"
#include "trading/Market.h"
#include "trading/MessageCheck.h"
#include "trading/ModuleVocabulary.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>

#include <algorithm>

namespace TradeModule {

using namespace TradeChart::TradeKeyFields;
using namespace Trading;

namespace {

QString word(const char *source)
{
    return *source == '\0' ? QString() : QCoreApplication::translate("MessageTable", source);
}

QString shown(const QJsonValue &value)
{
    constexpr int longest = 60;
    const QByteArray list = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    const QString json = QString::fromUtf8(list.mid(1, list.size() - 2));
    return json.size() > longest ? json.left(longest) + QStringLiteral("…") : json;
}

QJsonValue field(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key));
}

bool isThere(const QJsonValue &value)
{
    return !value.isUndefined() && !value.isNull() && value != QJsonValue(QString());
}

// Keys

/// "data/3/price" as "data/*/price": the same of many rows is told once.
QString withoutRow(QString place)
{
    static const QRegularExpression row(QStringLiteral("/[0-9]+/"));
    return place.replace(row, QStringLiteral("/*/"));
}

QString expected(const MessageKey &key)
{
    const QString form = word(wordOf(key.form));
    return form.isEmpty() ? word(wordOf(key.type)) : word(wordOf(key.type)) + QStringLiteral(", ") + form;
}

QString textOf(const KeyFinding &finding)
{
    const QString effect = word(wordOf(finding.key->whenWrong));
    const QString place = withoutRow(finding.place);
    return finding.fault == KeyFault::Missing
               ? translated("\"%1\" is missing: %2").arg(place, effect)
               : translated("\"%1\" is %2, but must be %3: %4")
                     .arg(place, shown(finding.value), expected(*finding.key), effect);
}

QStringList textsOf(const QVector<KeyFinding> &findings)
{
    QStringList texts;
    QSet<QString> told;
    for (const KeyFinding &finding : findings) {
        const QString which = withoutRow(finding.place) + QString::number(static_cast<int>(finding.fault));
        if (!told.contains(which)) {
            told.insert(which);
            texts.append(textOf(finding));
        }
    }
    return texts;
}

/// What only failures have, what only some lists have, and the cost of what nobody holds is left out by
/// right.
bool isOfSomeOnly(const MessageKey &key, const QJsonValue &value)
{
    const bool isEmptyCell =
        key.whenWrong == WhenWrong::EmptyCell && value.isString(); // of an open trip, say
    return key.whenWrong == WhenWrong::EmptyMessage || key.whenWrong == WhenWrong::NoLine || isEmptyCell;
}

/// Which of the keys that may be left out are there, and which are not.
void noteOptional(const MessageKeys &keys, const QJsonObject &record, const QString &way, Verdict *verdict)
{
    for (const MessageKey &key : keys) {
        const QJsonValue value = field(record, key.key);
        const QString place = way + QLatin1String(key.key);
        if (key.inside != nullptr && value.isObject()) {
            noteOptional(key.inside->keys, value.toObject(), place + QLatin1Char('/'), verdict);
        } else if (key.inside != nullptr) {
            for (const QJsonValue &row : value.toArray()) {
                noteOptional(key.inside->keys, row.toObject(), place + QStringLiteral("/*/"), verdict);
            }
        } else if (!isLeftOut(key, value)) {
            verdict->seen.insert(place);
        } else if (!key.isRequired && !isOfSomeOnly(key, value)) {
            verdict->leftOut.insert(place, key.whenWrong);
        }
    }
}

/// What is repeated in a failure, too.
void noteRepeated(const QJsonObject &question, const QJsonObject &failure, Verdict *verdict)
{
    for (const char *const key : {STKCODE, MARKET, SCREENID, OBJECTID, PlaceFields::CLIENTNO}) {
        const QString place = QStringLiteral("failure: ") + QLatin1String(key);
        if (isThere(field(failure, key))) {
            verdict->seen.insert(place);
        } else if (isThere(field(question, key))) {
            verdict->leftOut.insert(place, WhenWrong::Nothing);
        }
    }
    const bool isAboutCost = field(question, CMD) == QLatin1String(TradeChart::CmdType::HOLDERCOSTPRICE);
    if (isAboutCost && !isThere(field(failure, COSTPRICE))) {
        verdict->leftOut.insert(QStringLiteral("failure: ") + QLatin1String(COSTPRICE), WhenWrong::Zero);
    }
}

/// What the question did not have cannot be repeated.
void forgetUnasked(const QJsonObject &question, const QString &way, Verdict *verdict)
{
    for (const char *const key : {STKCODE, MARKET, SCREENID, OBJECTID, PlaceFields::CLIENTNO}) {
        if (!isThere(field(question, key))) {
            verdict->leftOut.remove(way + QLatin1String(key));
        }
    }
}

// The same key twice: JSON's reader keeps one of them, and the other one is lost.

int keysIn(const QJsonValue &value)
{
    int count = 0;
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        for (const QJsonValue &member : object) {
            count += 1 + keysIn(member);
        }
    }
    for (const QJsonValue &item : value.toArray()) {
        count += keysIn(item);
    }
    return count;
}

/// A colon outside of texts follows a key.
int colonsOutsideOfTexts(const QByteArray &json)
{
    int count = 0;
    bool isInText = false;
    for (int place = 0; place < json.size(); ++place) {
        const char byte = json[place];
        if (isInText && byte == '\\') {
            ++place;
        } else if (byte == '"') {
            isInText = !isInText;
        } else if (byte == ':' && !isInText) {
            ++count;
        }
    }
    return count;
}

Verdict parsed(const QByteArray &payload)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(payload, &error);
    Verdict verdict{document.object(), {}, {}, {}};
    if (!document.isObject()) {
        const QString why = document.isArray() ? word(wordOf(JsonType::Rows)) : error.errorString();
        verdict.faults.append(translated("it is no JSON object: %1").arg(why));
    } else if (keysIn(verdict.message) != colonsOutsideOfTexts(payload)) {
        verdict.faults.append(translated("a key stands twice in one object: readers take one of them"));
    }
    return verdict;
}

// Answers

bool isFailure(const QJsonObject &answer)
{
    return field(answer, SUCCESS) == QJsonValue(false);
}

void expectSame(const QString &key, const QJsonValue &value, const QJsonValue &asked, QStringList *faults)
{
    if (isThere(value) && value != asked) {
        faults->append(translated("\"%1\" is %2, but was asked as %3").arg(key, shown(value), shown(asked)));
    }
}

/// By these keys an overlay knows an answer as its own, a failure, too.
bool isKnownBy(const MessageRow &answer, const char *name)
{
    return std::any_of(answer.keys.begin(), answer.keys.end(), [name](const MessageKey &key) {
        return key.isRequired && qstrcmp(key.key, name) == 0;
    });
}

void checkRepeated(const MessageRow &row, const QJsonObject &question, const QJsonObject &answer,
                   QStringList *faults)
{
    for (const char *const key : {CMD, STKCODE, SCREENID, OBJECTID, PlaceFields::CLIENTNO}) {
        expectSame(QLatin1String(key), field(answer, key), field(question, key), faults);
        if (isKnownBy(row, key) && isThere(field(question, key)) && !isThere(field(answer, key))) {
            faults->append(translated("\"%1\" of the question is not repeated: the message is ignored")
                               .arg(QLatin1String(key)));
        }
    }
    if (const auto market = marketOfLetters(field(question, MARKET).toString())) {
        expectSame(QLatin1String(MARKET), field(answer, MARKET), marketNumber(*market), faults);
    }
}

void checkKind(const QJsonObject &answer, QStringList *faults)
{
    const int kind = field(answer, ERRCODE).toInt();
    if (isFailure(answer) && kind == 0) {
        faults->append(translated("a failure has no \"errcode\" of its kind"));
    }
    if (!isFailure(answer) && kind != 0) {
        faults->append(translated("\"errcode\" is %1 in an answer that is no failure").arg(kind));
    }
    if (isFailure(answer) && isThere(field(answer, DATA))) {
        faults->append(translated("a failure has \"data\""));
    }
}

/// No chart may draw a cost of 0.00 when nothing is held, or nothing is known.
void checkCostAgain(const QJsonObject &answer, QStringList *faults)
{
    const QJsonValue again = field(answer, COSTPRICE);
    const QJsonValue cost = field(field(answer, DATA).toObject(), COSTPRICE);
    const QJsonValue wanted = isThere(cost) ? cost : QJsonValue(QStringLiteral("nan"));
    if (isThere(again) && again != wanted) {
        faults->append(translated("\"costprice\" beside \"data\" is %1, but must be %2")
                           .arg(shown(again), shown(wanted)));
    }
}

/// What the combined overlay reads again beside what the others read.
QMap<QString, QJsonValue> saidAgain(const QJsonObject &trade, const char *day)
{
    const QString side = field(trade, RTSBSFLAG).toString();
    return {{QLatin1String(BUY), side == QLatin1String(TradeChart::BSFlag::BUY)},
            {QLatin1String(PRICE), field(trade, RTSMATCHPRICE).toString().toDouble()},
            {QLatin1String(VOL), field(trade, RTSMATCHQTY).toString().toDouble()},
            {QLatin1String(DATE), field(trade, day)}};
}

void checkTrade(const QJsonObject &trade, const char *day, QStringList *faults)
{
    const auto wanted = saidAgain(trade, day);
    for (auto again = wanted.begin(); again != wanted.end(); ++again) {
        const QJsonValue value = trade.value(again.key());
        const auto text =
            translated("\"%1\" of a trade says another thing than what it repeats").arg(again.key());
        if (isThere(value) && value != *again && !faults->contains(text)) {
            faults->append(text);
        }
    }
}

bool isAboutSecurity(const QJsonObject &question)
{
    const MessageRow *const row = findMessage(MessageRole::Question, field(question, CMD).toString());
    return row != nullptr && std::any_of(row->keys.begin(), row->keys.end(), [](const MessageKey &key) {
               return key.isRequired && qstrcmp(key.key, STKCODE) == 0;
           });
}

/// Records of another security would be drawn on this one's chart, or left out.
void checkSecurity(const QJsonObject &question, const QJsonObject &record, QStringList *faults)
{
    QStringList told;
    expectSame(QStringLiteral("data/*/stkcode"), field(record, STKCODE), field(question, STKCODE), &told);
    if (const auto market = marketOfLetters(field(question, MARKET).toString())) {
        expectSame(QStringLiteral("data/*/market"), field(record, MARKET), marketNumber(*market), &told);
    }
    for (const QString &fault : qAsConst(told)) {
        if (!faults->contains(fault)) {
            faults->append(fault);
        }
    }
}

void checkRecords(const QJsonObject &question, const QJsonObject &answer, QStringList *faults)
{
    const QString command = field(question, CMD).toString();
    const QJsonValue data = field(answer, DATA);
    const QJsonArray records = data.isObject() ? QJsonArray{data} : data.toArray();
    for (const QJsonValue &record : records) {
        if (isAboutSecurity(question)) {
            checkSecurity(question, record.toObject(), faults);
        }
        if (command == QLatin1String(TradeChart::CmdType::TODAYTRADE)) {
            checkTrade(record.toObject(), RTSORDERDATE, faults);
        } else if (command == QLatin1String(TradeChart::CmdType::HISTORYTRADE)) {
            checkTrade(record.toObject(), RTSDATE, faults);
        }
    }
}

} // namespace

bool isNoticed(WhenWrong effect)
{
    const auto losses = {WhenWrong::Zero, WhenWrong::Sale, WhenWrong::DrawnAllTheSame, WhenWrong::NoRows};
    return std::find(losses.begin(), losses.end(), effect) != losses.end();
}

QString effectText(WhenWrong effect)
{
    return word(wordOf(effect));
}

Verdict judgeAnswer(const QJsonObject &question, const QByteArray &payload)
{
    Verdict verdict = parsed(payload);
    if (verdict.message.isEmpty()) {
        return verdict;
    }
    const QString command = field(question, CMD).toString();
    const MessageRow *const known = findMessage(MessageRole::Answer, command);
    const MessageRow &row = known == nullptr ? *findMessage(MessageRole::Failure) : *known;
    verdict.faults += textsOf(findingsIn(row, verdict.message));
    checkRepeated(row, question, verdict.message, &verdict.faults);
    checkKind(verdict.message, &verdict.faults);
    checkRecords(question, verdict.message, &verdict.faults);
    if (command == QLatin1String(TradeChart::CmdType::HOLDERCOSTPRICE)) {
        checkCostAgain(verdict.message, &verdict.faults);
    }
    if (!isFailure(verdict.message)) {
        noteOptional(row.keys, verdict.message, command + QStringLiteral(": "), &verdict);
        forgetUnasked(question, command + QStringLiteral(": "), &verdict);
    } else {
        noteRepeated(question, verdict.message, &verdict);
    }
    return verdict;
}

Verdict judgeUnasked(MessageRole role, const QByteArray &payload)
{
    Verdict verdict = parsed(payload);
    if (!verdict.message.isEmpty()) {
        const MessageRow &row = *findMessage(role);
        verdict.faults += textsOf(findingsIn(row, verdict.message));
        noteOptional(row.keys, verdict.message, QLatin1String(row.topic) + QStringLiteral(": "), &verdict);
    }
    return verdict;
}

} // namespace TradeModule
