#include "trademodule/exchange/QuoteMessage.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"

namespace TradeModule {

Quote readQuote(const QJsonObject &object)
{
    const auto [quote, fault] = Trading::readQuote(object);
    if (fault && fault->key == nullptr) {
        throw Error(translated("the quote's prices do not agree: open %1, high %2, low %3, close %4")
                        .arg(quote.open.text(), quote.high.text(), quote.low.text(), quote.close.text()));
    }
    if (fault) {
        throw Error(translated("the quote's \"%1\" is \"%2\"").arg(QLatin1String(fault->key), fault->value));
    }
    return quote;
}

} // namespace TradeModule
