#include "trademodule/exchange/Quote.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/Error.h"
#include "trademodule/import/CellValue.h"

namespace TradeModule {

namespace {

QString textOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toVariant().toString();
}

[[noreturn]] void refuse(const QJsonObject &object, const char *key)
{
    throw Error(QStringLiteral("the quote's \"%1\" is \"%2\"").arg(QLatin1String(key), textOf(object, key)));
}

Money price(const QJsonObject &object, const char *key)
{
    bool isNumber = false;
    const std::optional<Money> money = Money::ofYuan(textOf(object, key).toDouble(&isNumber));
    if (!isNumber || !money || !(*money > Money())) {
        refuse(object, key);
    }
    return *money;
}

Market marketOf(const QJsonObject &object)
{
    const QString text = textOf(object, TradeChart::TradeKeyFields::MARKET);
    for (const Market market : {Market::Shanghai, Market::Shenzhen}) {
        if (text == marketLetters(market) || text == marketNumber(market)) {
            return market;
        }
    }
    refuse(object, TradeChart::TradeKeyFields::MARKET);
}

int timeOf(const QJsonObject &object)
{
    const std::optional<int> time = CellValue::time(textOf(object, "time"));
    if (!time) {
        refuse(object, "time");
    }
    return *time;
}

qint64 volumeOf(const QJsonObject &object)
{
    const double volume = textOf(object, "volume").toDouble();
    if (!(volume >= 0 && volume < 1e15)) {
        refuse(object, "volume");
    }
    return static_cast<qint64>(volume);
}

} // namespace

Quote readQuote(const QJsonObject &object)
{
    Quote quote;
    quote.security = {textOf(object, TradeChart::TradeKeyFields::STKCODE), marketOf(object)};
    quote.time = timeOf(object);
    quote.open = price(object, "open");
    quote.high = price(object, "high");
    quote.low = price(object, "low");
    quote.close = price(object, "close");
    quote.volume = volumeOf(object);
    if (object.contains(QLatin1String("preclose"))) {
        quote.previousClose = price(object, "preclose");
    }
    return quote;
}

} // namespace TradeModule
