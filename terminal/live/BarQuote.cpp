#include "terminal/live/BarQuote.h"

#include "terminal/data/TradingHours.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

namespace Terminal {

namespace {

namespace QuoteFields = Trading::QuoteFields;
using namespace TradeChart::TradeKeyFields;

QString key(const char *word)
{
    return QLatin1String(word);
}

QString numberText(double number)
{
    return QString::number(number, 'f', QLocale::FloatingPointShortest);
}

} // namespace

QJsonObject quoteOf(const Security &security, const Bar &bar, std::optional<double> previousClose,
                    std::optional<Trading::TradingDate> recorded)
{
    QJsonObject quote{
        {key(STKCODE), security.code},
        {key(MARKET), Trading::marketLetters(security.market)},
        {key(QuoteFields::DATE), QString::number(bar.date)},
        {key(QuoteFields::TIME), endOf(bar).text()},
        {key(QuoteFields::OPEN), numberText(bar.open)},
        {key(QuoteFields::HIGH), numberText(bar.high)},
        {key(QuoteFields::LOW), numberText(bar.low)},
        {key(QuoteFields::CLOSE), numberText(bar.close)},
        {key(QuoteFields::VOLUME), numberText(bar.volume)},
    };
    if (previousClose) {
        quote.insert(key(QuoteFields::PRECLOSE), numberText(*previousClose));
    }
    if (recorded) {
        quote.insert(key(QuoteFields::RECORDED), recorded->text());
    }
    return quote;
}

std::optional<Bar> barOf(const Trading::Quote &quote)
{
    const std::optional<int> minute = minuteOfQuote(quote.time);
    return minute
               ? std::optional(Bar{quote.date.number(), *minute, quote.open.yuan(), quote.high.yuan(),
                                   quote.low.yuan(), quote.close.yuan(), static_cast<double>(quote.volume)})
               : std::nullopt;
}

} // namespace Terminal
