#include "trademodule/exchange/Refusals.h"

#include "trademodule/Error.h"

namespace TradeModule {

void Refusals::decideOnce(const Wish &wish, const std::function<void()> &decision)
{
    const QString key = wish.clientNumber + QLatin1Char('\n') + wish.content;
    if (const QString *const before = m_reasons.object(key)) {
        throw Error(*before);
    }
    try {
        decision();
    } catch (const LedgerError &) {
        throw;
    } catch (const Error &refusal) {
        if (!wish.clientNumber.isEmpty()) {
            m_reasons.insert(key, new QString(refusal.reason()));
        }
        throw;
    }
}

} // namespace TradeModule
