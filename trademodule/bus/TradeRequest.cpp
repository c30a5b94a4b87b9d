#include "trademodule/bus/TradeRequest.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/Error.h"
#include "trademodule/ExchangeTime.h"

namespace TradeModule {

using namespace TradeChart::TradeKeyFields;

QString TradeRequest::text(const char *key) const
{
    const QJsonValue value = field(key);
    if (!value.isString() || value.toString().isEmpty()) {
        throw Error(QStringLiteral("\"%1\" must be a text that is not empty").arg(QLatin1String(key)));
    }
    return value.toString();
}

QString TradeRequest::command() const
{
    return text(CMD);
}

Security TradeRequest::security() const
{
    const QString code = text(STKCODE);
    const QString letters = text(MARKET);
    const std::optional<Market> market = marketOfLetters(letters);
    if (!market) {
        throw Error(
            QStringLiteral("\"%1\" is \"%2\", but must be SH or SZ").arg(QLatin1String(MARKET), letters));
    }
    return {code, *market};
}

int TradeRequest::date(const char *key) const
{
    const QString value = text(key);
    const int number = value.toInt();
    if (value.size() != 8 || !dateOfNumber(number).isValid()) {
        throw Error(QStringLiteral("\"%1\" is \"%2\", but must be a date of the form yyyymmdd")
                        .arg(QLatin1String(key), value));
    }
    return number;
}

DateRange TradeRequest::days() const
{
    return {date(START), date(END)};
}

} // namespace TradeModule
