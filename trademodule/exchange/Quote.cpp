#include "trademodule/exchange/Quote.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trading/ModuleVocabulary.h"
#include "trading/SecurityId.h"
#include "trading/TradingUnits.h"

namespace TradeModule {

using namespace Trading::QuoteFields;

namespace {

QString textOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toVariant().toString();
}

[[noreturn]] void refuse(const QJsonObject &object, const char *key)
{
    throw Error(translated("the quote's \"%1\" is \"%2\"").arg(QLatin1String(key), textOf(object, key)));
}

Money price(const QJsonObject &object, const char *key)
{
    bool isNumber = false;
    const std::optional<Money> money = Money::ofYuan(textOf(object, key).toDouble(&isNumber));
    if (!isNumber || !money || !(*money > Money()) || *money > Trading::highestPrice) {
        refuse(object, key);
    }
    return *money;
}

QString codeOf(const QJsonObject &object)
{
    const QString code = textOf(object, TradeChart::TradeKeyFields::STKCODE);
    if (!Trading::isExchangeCode(code)) {
        refuse(object, TradeChart::TradeKeyFields::STKCODE);
    }
    return code;
}

Market marketOf(const QJsonObject &object)
{
    const QString text = textOf(object, TradeChart::TradeKeyFields::MARKET);
    const std::optional<Market> market = marketOfLetters(text);
    if (market) {
        return *market;
    }
    if (const std::optional<Market> ofNumber = marketOfNumber(text)) {
        return *ofNumber;
    }
    refuse(object, TradeChart::TradeKeyFields::MARKET);
}

TradingDate dateOf(const QJsonObject &object)
{
    const std::optional<TradingDate> date = TradingDate::ofText(textOf(object, DATE));
    if (!date) {
        refuse(object, DATE);
    }
    return *date;
}

ClockTime timeOf(const QJsonObject &object)
{
    const std::optional<ClockTime> time = ClockTime::ofText(textOf(object, TIME));
    if (!time) {
        refuse(object, TIME);
    }
    return *time;
}

qint64 volumeOf(const QJsonObject &object)
{
    bool isNumber = false;
    const double volume = textOf(object, VOLUME).toDouble(&isNumber);
    if (!isNumber || !(volume >= 0 && volume < 1e15)) {
        refuse(object, VOLUME);
    }
    return static_cast<qint64>(volume);
}

/// No bar opens or closes beyond its own high and low.
void refuseDisagreement(const Quote &quote)
{
    const auto isWithin = [&quote](Money price) { return !(price < quote.low) && !(price > quote.high); };
    if (!isWithin(quote.open) || !isWithin(quote.close)) {
        throw Error(translated("the quote's prices do not agree: open %1, high %2, low %3, close %4")
                        .arg(quote.open.text(), quote.high.text(), quote.low.text(), quote.close.text()));
    }
}

} // namespace

Quote readQuote(const QJsonObject &object)
{
    Quote quote{{codeOf(object), marketOf(object)}, dateOf(object), timeOf(object)};
    quote.open = price(object, OPEN);
    quote.high = price(object, HIGH);
    quote.low = price(object, LOW);
    quote.close = price(object, CLOSE);
    refuseDisagreement(quote);
    quote.volume = volumeOf(object);
    if (object.contains(QLatin1String(PRECLOSE))) {
        quote.previousClose = price(object, PRECLOSE);
    }
    return quote;
}

} // namespace TradeModule
