#include "trademodule/bus/TradeRequest.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trading/ModuleVocabulary.h"
#include "trading/TradingUnits.h"

#include <algorithm>

namespace TradeModule {

using namespace TradeChart::TradeKeyFields;

void TradeRequest::refuse(const char *key, const QString &expected) const
{
    throw Error(translated("\"%1\" is \"%2\", but must be %3")
                    .arg(QLatin1String(key), field(key).toVariant().toString(), expected));
}

/// To name a field that is missing or no text is more help than to say what it must be.
void TradeRequest::needText(const char *key) const
{
    if (field(key).toString().isEmpty()) {
        throw Error(translated("\"%1\" must be a text that is not empty").arg(QLatin1String(key)));
    }
}

template <typename Value>
Value TradeRequest::needed(const char *key, const std::optional<Value> &value, const QString &expected) const
{
    needText(key);
    if (!value) {
        refuse(key, expected);
    }
    return *value;
}

QString TradeRequest::command() const
{
    needText(CMD);
    return *m_question.command();
}

SecurityId TradeRequest::security() const
{
    needText(STKCODE);
    return {*m_question.securityCode(), needed(MARKET, m_question.market(), translated("SH or SZ"))};
}

DateRange TradeRequest::days() const
{
    const QString expected = translated("a date of the form yyyymmdd");
    return {needed(START, m_question.firstDay(), expected), needed(END, m_question.lastDay(), expected)};
}

TradingDate TradeRequest::day() const
{
    const std::optional<TradingDate> day = m_question.day();
    if (!day) {
        refuse(DATE, translated("a date, a number yyyymmdd"));
    }
    return *day;
}

TradingDate TradeRequest::orderDate() const
{
    return needed(RTSORDERDATE, m_question.orderDay(), translated("a date of the form yyyymmdd"));
}

qint64 TradeRequest::orderNumber() const
{
    return needed(RTSORDERNO, m_question.orderNumber(), translated("a whole number greater than 0"));
}

Direction TradeRequest::direction() const
{
    return needed(RTSBSFLAG, m_question.direction(), translated("0B or 0S"));
}

Money TradeRequest::orderPrice() const
{
    const QString expected = translated("a price in yuan");
    const Money price = needed(RTSENTRUSTPRICE, m_question.orderPrice(), expected);
    if (price > Trading::highestPrice) {
        refuse(RTSENTRUSTPRICE, expected);
    }
    return price;
}

qint64 TradeRequest::orderQuantity() const
{
    const qint64 quantity =
        needed(RTSENTRUSTQTY, m_question.orderQuantity(), translated("a whole number greater than 0"));
    if (quantity > Trading::mostShares) {
        refuse(RTSENTRUSTQTY, translated("at most %1").arg(Trading::mostShares));
    }
    return quantity;
}

QString TradeRequest::language() const
{
    return m_question.language().value_or(QString());
}

QString TradeRequest::clientNumber() const
{
    return field(Trading::PlaceFields::CLIENTNO).isUndefined() ? QString() : neededClientNumber();
}

QString TradeRequest::neededClientNumber() const
{
    return needed(Trading::PlaceFields::CLIENTNO, m_question.clientNumber(),
                  translated("1 to 64 printable ASCII characters"));
}

bool TradeRequest::has(const char *key) const
{
    const QJsonValue value = field(key);
    const bool isEmpty = value.isString() && value.toString().isEmpty();
    return !value.isUndefined() && !value.isNull() && !isEmpty;
}

KeptResults::Wish TradeRequest::results() const
{
    using namespace Trading::ResultsFields;
    KeptResults::Wish wish;
    wish.group = needed(BY, m_question.listGroup(), translated("sale, trip, security, month or year"));
    wish.code = m_question.securityCode().value_or(QString());
    wish.order = listOrder(wish.group);
    wish.isDescending = m_question.isDescending();
    return wish;
}

std::optional<ResultField> TradeRequest::listOrder(ResultGroup group) const
{
    using namespace Trading::ResultsFields;
    if (!has(ORDER)) {
        return std::nullopt;
    }
    const QString expected = translated("a column of this list");
    const ResultField field = needed(ORDER, m_question.listOrder(), expected);
    const std::vector<ResultField> &fields = Trading::fieldsOf(group);
    if (std::find(fields.begin(), fields.end(), field) == fields.end()) {
        refuse(ORDER, expected);
    }
    return field;
}

qint64 TradeRequest::firstRow() const
{
    constexpr const char *key = Trading::ResultsFields::FIRST;
    return has(key) ? needed(key, m_question.firstRow(), translated("a whole number, 0 or more")) : 0;
}

int TradeRequest::mostRows() const
{
    constexpr const char *key = Trading::ResultsFields::MOST;
    return has(key) ? needed(key, m_question.mostRows(),
                             translated("a whole number from 1 to %1").arg(Trading::mostResultRows))
                    : Trading::mostResultRows;
}

CostMethod TradeRequest::costMethod() const
{
    constexpr const char *key = Trading::CostFields::COSTMETHOD;
    const QString word = m_question.costMethod().value_or(QString());
    return needed(key, costMethodOf(word), translated("average, diluted or fifo"));
}

} // namespace TradeModule
