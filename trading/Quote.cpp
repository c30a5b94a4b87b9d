#include "trading/Quote.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"
#include "trading/TradingUnits.h"

namespace Trading {

namespace {

using namespace QuoteFields;
using TradeChart::TradeKeyFields::MARKET;
using TradeChart::TradeKeyFields::STKCODE;

constexpr double tooManyShares = 1e15;

QString textOf(const QJsonObject &message, const char *key)
{
    return message.value(QLatin1String(key)).toVariant().toString();
}

std::optional<QString> codeOf(const QString &text)
{
    return isExchangeCode(text) ? std::optional(text) : std::nullopt;
}

std::optional<Market> marketOf(const QString &text)
{
    const std::optional<Market> market = marketOfLetters(text);
    return market ? market : marketOfNumber(text);
}

std::optional<Money> priceOf(const QString &text)
{
    bool isNumber = false;
    const std::optional<Money> money = Money::ofYuan(text.toDouble(&isNumber));
    const bool isPrice = isNumber && money && *money > Money() && !(*money > highestPrice);
    return isPrice ? money : std::nullopt;
}

std::optional<qint64> volumeOf(const QString &text)
{
    bool isNumber = false;
    const double volume = text.toDouble(&isNumber);
    const bool isVolume = isNumber && volume >= 0 && volume < tooManyShares;
    return isVolume ? std::optional(static_cast<qint64>(volume)) : std::nullopt;
}

/// Reads the values of a message, and remembers the first that does not hold what it must.
class Reader
{
public:
    explicit Reader(const QJsonObject &message) : m_message(message) {}

    template <typename Value>
    Value read(const char *key, std::optional<Value> (*valueOf)(const QString &), Value otherwise)
    {
        const QString text = textOf(m_message, key);
        const std::optional<Value> value = valueOf(text);
        if (!value && !m_fault) {
            m_fault = QuoteFault{key, text};
        }
        return value.value_or(otherwise);
    }
    Money readPrice(const char *key) { return read(key, priceOf, Money()); }

    bool has(const char *key) const { return m_message.contains(QLatin1String(key)); }
    const std::optional<QuoteFault> &fault() const { return m_fault; }

private:
    const QJsonObject &m_message;
    std::optional<QuoteFault> m_fault;
};

bool agree(const Quote &quote)
{
    const auto isWithin = [&quote](Money price) { return !(price < quote.low) && !(price > quote.high); };
    return isWithin(quote.open) && isWithin(quote.close);
}

} // namespace

QuoteReading readQuote(const QJsonObject &message)
{
    Reader reader(message);
    const QString code = reader.read(STKCODE, codeOf, QString());
    const Market market = reader.read(MARKET, marketOf, Market::Shanghai);
    const TradingDate date = reader.read(DATE, TradingDate::ofText, TradingDate::first());
    Quote quote{{code, market}, date, reader.read(TIME, ClockTime::ofText, ClockTime())};
    quote.open = reader.readPrice(OPEN);
    quote.high = reader.readPrice(HIGH);
    quote.low = reader.readPrice(LOW);
    quote.close = reader.readPrice(CLOSE);
    quote.volume = reader.read(VOLUME, volumeOf, qint64(0));
    if (reader.has(PRECLOSE)) {
        quote.previousClose = reader.readPrice(PRECLOSE);
    }
    if (reader.has(RECORDED)) { // one that cannot be read is a replay's all the same
        quote.recorded = TradingDate::ofText(textOf(message, RECORDED)).value_or(quote.date);
    }
    const bool isWhole = !reader.fault();
    return {quote, isWhole && !agree(quote) ? QuoteFault() : reader.fault()};
}

} // namespace Trading
