#include "trading/Question.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonDocument>

#include <algorithm>

namespace Trading {

using namespace TradeChart::TradeKeyFields;

namespace {

bool isClientNumber(const QString &text)
{
    constexpr int mostCharacters = 64;
    const auto isPrintable = [](QChar character) {
        return character >= QLatin1Char(' ') && character <= QLatin1Char('~');
    };
    return !text.isEmpty() && text.size() <= mostCharacters &&
           std::all_of(text.begin(), text.end(), isPrintable);
}

} // namespace

Question::Question(const char *command)
{
    set(CMD, QLatin1String(command));
}

void Question::answerOn(const QString &channel, const QString &id)
{
    set(SCREENID, channel);
    if (!id.isEmpty()) {
        set(OBJECTID, id);
    }
}

void Question::setSecurity(const SecurityId &security)
{
    set(STKCODE, security.code);
    set(MARKET, marketLetters(security.market));
}

/// The one field of a question that is a number: every trading module reads it so.
void Question::setDay(TradingDate day)
{
    m_object.insert(QLatin1String(DATE), day.number());
}

void Question::setDays(TradingDate first, TradingDate last)
{
    set(START, first.text());
    set(END, last.text());
}

void Question::setOrder(TradingDate day, const QString &number)
{
    set(RTSORDERDATE, day.text());
    set(RTSORDERNO, number);
}

void Question::setNewOrder(Direction direction, Money price, qint64 quantity)
{
    set(RTSBSFLAG, QLatin1String(directionCode(direction)));
    set(RTSENTRUSTPRICE, price.text());
    set(RTSENTRUSTQTY, QString::number(quantity));
}

void Question::setNewPrice(Money price)
{
    set(RTSENTRUSTPRICE, price.text());
}

void Question::setClientNumber(const QString &number)
{
    set(PlaceFields::CLIENTNO, number);
}

void Question::setLanguage(const QString &word)
{
    set(AskerFields::LANG, word);
}

void Question::setList(ResultGroup group, qint64 first, int most)
{
    set(ResultsFields::BY, wordOf(group));
    set(ResultsFields::FIRST, QString::number(first));
    set(ResultsFields::MOST, QString::number(most));
}

void Question::setListOrder(ResultField field, bool isDescending)
{
    set(ResultsFields::ORDER, QLatin1String(columnOf(field).key));
    m_object.insert(QLatin1String(ResultsFields::DESCENDING), isDescending);
}

void Question::setCostMethod(const QString &word)
{
    set(CostFields::COSTMETHOD, word);
}

QByteArray Question::toJson() const
{
    return QJsonDocument(m_object).toJson(QJsonDocument::Compact);
}

std::optional<QString> Question::command() const
{
    return text(CMD);
}

std::optional<QString> Question::answerChannel() const
{
    return text(SCREENID);
}

std::optional<QString> Question::securityCode() const
{
    return text(STKCODE);
}

std::optional<Market> Question::market() const
{
    return marketOfLetters(field(MARKET).toString());
}

std::optional<TradingDate> Question::day() const
{
    return TradingDate::ofNumber(field(DATE).toInt());
}

std::optional<TradingDate> Question::firstDay() const
{
    return date(START);
}

std::optional<TradingDate> Question::lastDay() const
{
    return date(END);
}

std::optional<TradingDate> Question::orderDay() const
{
    return date(RTSORDERDATE);
}

std::optional<qint64> Question::orderNumber() const
{
    return positiveNumber(RTSORDERNO);
}

std::optional<Direction> Question::direction() const
{
    return directionOfCode(field(RTSBSFLAG).toString());
}

std::optional<Money> Question::orderPrice() const
{
    bool isNumber = false;
    const double price = field(RTSENTRUSTPRICE).toString().toDouble(&isNumber);
    return isNumber && price > 0 ? Money::ofExactYuan(price) : std::nullopt;
}

std::optional<qint64> Question::orderQuantity() const
{
    return positiveNumber(RTSENTRUSTQTY);
}

std::optional<QString> Question::clientNumber() const
{
    const QString number = field(PlaceFields::CLIENTNO).toString();
    return isClientNumber(number) ? std::optional(number) : std::nullopt;
}

std::optional<ResultGroup> Question::listGroup() const
{
    return resultGroupOf(field(ResultsFields::BY).toString());
}

std::optional<qint64> Question::firstRow() const
{
    bool isNumber = false;
    const qint64 number = field(ResultsFields::FIRST).toString().toInt(&isNumber);
    return isNumber && number >= 0 ? std::optional(number) : std::nullopt;
}

std::optional<int> Question::mostRows() const
{
    const auto number = positiveNumber(ResultsFields::MOST);
    return number && *number <= mostResultRows ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

std::optional<ResultField> Question::listOrder() const
{
    const ResultColumn *const column = findResultColumn(field(ResultsFields::ORDER).toString());
    return column == nullptr ? std::nullopt : std::optional(column->field);
}

bool Question::isDescending() const
{
    return field(ResultsFields::DESCENDING).toBool();
}

std::optional<QString> Question::costMethod() const
{
    return text(CostFields::COSTMETHOD);
}

std::optional<QString> Question::language() const
{
    return text(AskerFields::LANG);
}

std::optional<QString> Question::text(const char *key) const
{
    const QString value = field(key).toString();
    return value.isEmpty() ? std::nullopt : std::optional(value);
}

std::optional<TradingDate> Question::date(const char *key) const
{
    return TradingDate::ofText(field(key).toString());
}

std::optional<qint64> Question::positiveNumber(const char *key) const
{
    bool isNumber = false;
    const qint64 number = field(key).toString().toLongLong(&isNumber);
    return isNumber && number > 0 ? std::optional(number) : std::nullopt;
}

} // namespace Trading
