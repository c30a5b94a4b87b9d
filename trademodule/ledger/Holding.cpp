#include "trademodule/ledger/Holding.h"

namespace TradeModule {

namespace {

EventKind kindOf(Side side)
{
    switch (side) {
    case Side::Buy:
    case Side::Allotment:
        return EventKind::Buy;
    case Side::Sell:
        return EventKind::Sell;
    case Side::Bonus:
        return EventKind::Bonus;
    case Side::Merger:
        return EventKind::Merger;
    case Side::In:
        return EventKind::In;
    case Side::Out:
        return EventKind::Out;
    }
    Q_UNREACHABLE();
}

} // namespace

AccountEvent eventOf(const Execution &execution)
{
    return {kindOf(execution.side), execution.date,   execution.time, execution.quantity,
            execution.price,        execution.amount, execution.fee,  execution.stampDuty};
}

} // namespace TradeModule
