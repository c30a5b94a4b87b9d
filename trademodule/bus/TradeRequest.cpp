#include "trademodule/bus/TradeRequest.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/Error.h"
#include "trademodule/ExchangeTime.h"
#include "trademodule/Language.h"
#include "trademodule/exchange/TradingRules.h"

namespace TradeModule {

using namespace TradeChart::TradeKeyFields;

namespace {

[[noreturn]] void refuse(const char *key, const QString &value, const QString &expected)
{
    throw Error(translated("\"%1\" is \"%2\", but must be %3").arg(QLatin1String(key), value, expected));
}

} // namespace

QString TradeRequest::text(const char *key) const
{
    const QJsonValue value = field(key);
    if (!value.isString() || value.toString().isEmpty()) {
        throw Error(translated("\"%1\" must be a text that is not empty").arg(QLatin1String(key)));
    }
    return value.toString();
}

QString TradeRequest::command() const
{
    return text(CMD);
}

SecurityId TradeRequest::security() const
{
    const QString code = text(STKCODE);
    const QString letters = text(MARKET);
    const std::optional<Market> market = marketOfLetters(letters);
    if (!market) {
        refuse(MARKET, letters, translated("SH or SZ"));
    }
    return {code, *market};
}

int TradeRequest::date(const char *key) const
{
    const QString value = text(key);
    const int number = value.toInt();
    if (value.size() != 8 || !dateOfNumber(number).isValid()) {
        refuse(key, value, translated("a date of the form yyyymmdd"));
    }
    return number;
}

DateRange TradeRequest::days() const
{
    return {date(START), date(END)};
}

int TradeRequest::day() const
{
    const int number = field(DATE).toInt();
    if (!dateOfNumber(number).isValid()) {
        refuse(DATE, field(DATE).toVariant().toString(), translated("a date, a number yyyymmdd"));
    }
    return number;
}

int TradeRequest::orderDate() const
{
    return date(RTSORDERDATE);
}

qint64 TradeRequest::positive(const char *key) const
{
    const QString value = text(key);
    const qint64 number = value.toLongLong();
    if (number <= 0) {
        refuse(key, value, translated("a whole number greater than 0"));
    }
    return number;
}

qint64 TradeRequest::orderNumber() const
{
    return positive(RTSORDERNO);
}

qint64 TradeRequest::orderQuantity() const
{
    const qint64 quantity = positive(RTSENTRUSTQTY);
    if (quantity > TradingRules::mostShares) {
        refuse(RTSENTRUSTQTY, text(RTSENTRUSTQTY), translated("at most %1").arg(TradingRules::mostShares));
    }
    return quantity;
}

Side TradeRequest::side() const
{
    const QString value = text(RTSBSFLAG);
    const QString letter = toBsFlag(value).isEmpty() ? value : toBsFlag(value);
    if (letter == QLatin1String(TradeChart::BSFlag::BUY)) {
        return Side::Buy;
    }
    if (letter != QLatin1String(TradeChart::BSFlag::SELL)) {
        refuse(RTSBSFLAG, value, translated("0B or 0S"));
    }
    return Side::Sell;
}

Money TradeRequest::orderPrice() const
{
    const QString value = text(RTSENTRUSTPRICE);
    bool isNumber = false;
    const double yuan = value.toDouble(&isNumber);
    const std::optional<Money> price = isNumber ? Money::ofYuan(yuan) : std::nullopt;
    if (!price || !(yuan > 0) || *price > TradingRules::highestPrice) {
        refuse(RTSENTRUSTPRICE, value, translated("a price in yuan"));
    }
    return *price;
}

} // namespace TradeModule
