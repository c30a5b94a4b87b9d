#include "trading/OrderStatusName.h"

#include "tradechartobject/common/TradeVocabulary.h"

#include <QtGlobal>

#include <algorithm>
#include <iterator>

namespace Trading {

const char *orderStatusName(const QString &code)
{
    using namespace TradeChart::OrderStatus;
    static const struct
    {
        const char *code;
        const char *name;
    } names[] = {
        {None, QT_TRANSLATE_NOOP("OrderStatus", "not sent")},
        {Quoting, QT_TRANSLATE_NOOP("OrderStatus", "on its way")},
        {Quoted, QT_TRANSLATE_NOOP("OrderStatus", "open")},
        {QuotedWaittingCancel, QT_TRANSLATE_NOOP("OrderStatus", "being cancelled")},
        {PartDealWaittingCancel, QT_TRANSLATE_NOOP("OrderStatus", "part dealt, being cancelled")},
        {PartCanceled, QT_TRANSLATE_NOOP("OrderStatus", "part dealt, rest cancelled")},
        {Canceled, QT_TRANSLATE_NOOP("OrderStatus", "cancelled")},
        {PartDeal, QT_TRANSLATE_NOOP("OrderStatus", "part dealt")},
        {Dealed, QT_TRANSLATE_NOOP("OrderStatus", "dealt")},
        {AbolishedOrder, QT_TRANSLATE_NOOP("OrderStatus", "void")},
        {WaittingQuote, QT_TRANSLATE_NOOP("OrderStatus", "to be sent")},
        {QuotingB, QT_TRANSLATE_NOOP("OrderStatus", "on its way")},
        {Conformed, QT_TRANSLATE_NOOP("OrderStatus", "confirmed")},
    };
    const auto *const found = std::find_if(std::begin(names), std::end(names), [&code](const auto &row) {
        return code.compare(QLatin1String(row.code), Qt::CaseInsensitive) == 0;
    });
    return found == std::end(names) ? nullptr : found->name;
}

} // namespace Trading
