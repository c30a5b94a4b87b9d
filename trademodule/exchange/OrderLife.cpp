#include "trademodule/exchange/OrderLife.h"

#include "tradechartobject/common/OrderStatusTable.h"
#include "tradechartobject/common/TradeVocabulary.h"

namespace TradeModule::OrderLife {

namespace {

using namespace TradeChart::OrderStatus;

bool is(const Order &order, const char *status)
{
    return order.status == QLatin1String(status);
}

void enter(Order *order, const char *status)
{
    order->status = QLatin1String(status);
}

using Limits = Conditions::Limits;

const char *statusWhenReported(Limits limits)
{
    switch (limits) {
    case Limits::Unknown:
        return Quoting;
    case Limits::Kept:
        return Quoted;
    case Limits::Broken:
        return AbolishedOrder;
    }
    return Quoting;
}

/// False when that changes nothing.
bool report(Order *order, Limits limits)
{
    const char *const status = statusWhenReported(limits);
    const bool isOther = !is(*order, status);
    enter(order, status);
    return isOther;
}

/// Nothing more of the order is dealt.
void end(Order *order)
{
    order->cancelledQuantity = order->quantity - order->matchedQuantity;
    enter(order, order->matchedQuantity > 0 ? PartCanceled : Canceled);
}

} // namespace

QString statusWhenPlaced(bool isExchangeOpen)
{
    return QLatin1String(isExchangeOpen ? Quoting : WaittingQuote);
}

bool isLeft(const Order &order)
{
    return is(order, None);
}

const QStringList &newStatuses()
{
    static const QStringList statuses{QLatin1String(None), QLatin1String(Quoting),
                                      QLatin1String(WaittingQuote)};
    return statuses;
}

bool advance(Order *order, Conditions conditions)
{
    const bool isCancelling = is(*order, QuotedWaittingCancel) || is(*order, PartDealWaittingCancel);
    if (isCancelling || order->date < conditions.today) {
        end(order);
        return true;
    }
    const bool wasLeft = is(*order, None);
    if (wasLeft) {
        order->status = statusWhenPlaced(conditions.isOpen);
    }
    if (newStatuses().contains(order->status) && conditions.isOpen) {
        return report(order, conditions.limits) || wasLeft;
    }
    if (is(*order, Quoted) && conditions.limits == Limits::Broken) { // another day is played now
        enter(order, AbolishedOrder);
        return true;
    }
    return wasLeft;
}

bool isDealable(const Order &order)
{
    return is(order, Quoted) || is(order, PartDeal);
}

void deal(Order *order, const Execution &execution)
{
    order->matchedQuantity += execution.quantity;
    order->matchedAmount = order->matchedAmount + execution.amount;
    enter(order, order->openQuantity() == 0 ? Dealed : PartDeal);
}

/// An order that was left in the ledger and that the exchange has not seen yet can be cancelled here, though
/// charts do not offer it.
bool canBeCancelled(const Order &order)
{
    return is(order, None) || TradeChart::isCancellable(order.status);
}

/// An order that the exchange does not know yet ends at once.
void cancel(Order *order)
{
    if (is(*order, Quoted)) {
        enter(order, QuotedWaittingCancel);
    } else if (is(*order, PartDeal)) {
        enter(order, PartDealWaittingCancel);
    } else {
        end(order);
    }
}

} // namespace TradeModule::OrderLife
