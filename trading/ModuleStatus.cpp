#include "trading/ModuleStatus.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace Trading {

using namespace StatusFields;
using TradeChart::TradeKeyFields::CMD;
using TradeChart::TradeKeyFields::MARKET;
using TradeChart::TradeKeyFields::STKCODE;

namespace {

constexpr double microsecondsInASecond = 1e6;
constexpr double largestWhole = 9007199254740992; // 2^53: a JSON number tells each up to here

QString key(const char *word)
{
    return QLatin1String(word);
}

double secondsOf(std::chrono::microseconds time)
{
    return static_cast<double>(time.count()) / microsecondsInASecond;
}

/// Who answers is another program: what no counter can have reached counts as not said.
qint64 wholeOf(double number, qint64 ifNotSaid)
{
    return number >= 0 && number <= largestWhole ? qRound64(number) : ifNotSaid;
}

std::chrono::microseconds timeOf(const QJsonValue &value)
{
    return std::chrono::microseconds(wholeOf(value.toDouble() * microsecondsInASecond, 0));
}

qint64 countOf(const QJsonValue &value, qint64 ifNotSaid = 0)
{
    return wholeOf(value.toDouble(-1), ifNotSaid);
}

QJsonObject jsonOf(const ModuleStatus::Answers &answers)
{
    return {{key(CMD), answers.command},
            {key(COUNT), answers.count},
            {key(FAILURES), answers.failures},
            {key(SECONDS), secondsOf(answers.taken)},
            {key(LONGEST), secondsOf(answers.longest)}};
}

ModuleStatus::Answers answersOf(const QJsonObject &object)
{
    return {object.value(key(CMD)).toString(), countOf(object.value(key(COUNT))),
            countOf(object.value(key(FAILURES))), timeOf(object.value(key(SECONDS))),
            timeOf(object.value(key(LONGEST)))};
}

QJsonObject jsonOf(const ModuleStatus::LastQuote &quote)
{
    return {{key(STKCODE), quote.security.code},
            {key(MARKET), marketLetters(quote.security.market)},
            {key(QuoteFields::DATE), quote.date.text()},
            {key(QuoteFields::TIME), quote.time.text()},
            {key(HEARD), quote.heard.toUTC().toString(Qt::ISODate)}};
}

std::optional<ModuleStatus::LastQuote> lastQuoteOf(const QJsonObject &object)
{
    const auto market = marketOfLetters(object.value(key(MARKET)).toString());
    const auto date = TradingDate::ofText(object.value(key(QuoteFields::DATE)).toString());
    const auto time = ClockTime::ofText(object.value(key(QuoteFields::TIME)).toString());
    const auto heard = QDateTime::fromString(object.value(key(HEARD)).toString(), Qt::ISODate);
    if (!market || !date || !time || !heard.isValid()) {
        return std::nullopt;
    }
    return ModuleStatus::LastQuote{{object.value(key(STKCODE)).toString(), *market}, *date, *time, heard};
}

} // namespace

QJsonObject ModuleStatus::toJson() const
{
    QJsonObject object{{key(MODULE), QJsonDocument::fromJson(module.toJson()).object()},
                       {key(QUOTES), quotes},
                       {key(WAITINGQUOTES), waitingQuotes}};
    QJsonArray rows;
    for (const Answers &row : answers) {
        rows.append(jsonOf(row));
    }
    object.insert(key(ANSWERS), rows);
    if (ledgerTrouble.isEmpty()) {
        object.insert(key(OPEN), openOrders);
    } else {
        object.insert(key(TROUBLE), ledgerTrouble);
    }
    if (lastQuote) {
        object.insert(key(LASTQUOTE), jsonOf(*lastQuote));
    }
    return object;
}

std::optional<ModuleStatus> ModuleStatus::ofJson(const QJsonObject &object)
{
    const QJsonObject told = object.value(key(MODULE)).toObject();
    const auto module = TradePresence::ofJson(QJsonDocument(told).toJson(QJsonDocument::Compact));
    if (!module) {
        return std::nullopt;
    }
    ModuleStatus status;
    status.module = *module;
    status.ledgerTrouble = object.value(key(TROUBLE)).toString();
    status.openOrders = countOf(object.value(key(OPEN)), -1);
    status.quotes = countOf(object.value(key(QUOTES)));
    status.waitingQuotes = countOf(object.value(key(WAITINGQUOTES)));
    status.lastQuote = lastQuoteOf(object.value(key(LASTQUOTE)).toObject());
    for (const QJsonValue &row : object.value(key(ANSWERS)).toArray()) {
        status.answers.append(answersOf(row.toObject()));
    }
    return status;
}

} // namespace Trading
