#include "trademodule/ledger/ColumnValue.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"

namespace TradeModule::ColumnValue {

namespace {

template <typename Value>
Value valid(const std::optional<Value> &value, const QVariant &column)
{
    if (!value) {
        throw LedgerError(
            translated("the ledger holds \"%1\" where no such value can be").arg(column.toString()));
    }
    return *value;
}

} // namespace

TradingDate date(const QVariant &value)
{
    return valid(TradingDate::ofNumber(value.toInt()), value);
}

ClockTime time(const QVariant &value)
{
    return valid(ClockTime::ofNumber(value.toInt()), value);
}

Money money(const QVariant &value)
{
    return Money::ofSteps(value.toLongLong());
}

Market market(const QVariant &value)
{
    return valid(marketInLedger(value.toString()), value);
}

Direction direction(const QVariant &value)
{
    return valid(directionOfCode(value.toString()), value);
}

CostMethod costMethod(const QVariant &value)
{
    return valid(costMethodOf(value.toString()), value);
}

Trading::ReplacementState replacementState(const QVariant &value)
{
    return valid(Trading::replacementStateOf(value.toString()), value);
}

} // namespace TradeModule::ColumnValue
