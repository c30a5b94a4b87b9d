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
    const bool isNew = is(*order, Quoting) || is(*order, WaittingQuote);
    if (isNew && conditions.isOpen) {
        enter(order, conditions.isBeyondLimits ? AbolishedOrder : Quoted);
        return true;
    }
    if (is(*order, Quoted) && conditions.isBeyondLimits) { // the limits were not known when it was reported
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
