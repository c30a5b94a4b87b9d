#pragma once

#include "trademodule/SharedTypes.h"
#include "trademodule/results/CostMethod.h"
#include "trading/ReplacementState.h"

#include <QVariant>

namespace TradeModule {

/// What the columns of a ledger hold besides plain numbers and texts. A LedgerError for what no program that
/// keeps ledgers writes.
namespace ColumnValue {

TradingDate date(const QVariant &value);                           ///< yyyymmdd
ClockTime time(const QVariant &value);                             ///< hhmmsscc
Money money(const QVariant &value);                                ///< steps of 0.0001 yuan
Market market(const QVariant &value);                              ///< letters
Direction direction(const QVariant &value);                        ///< a letter
CostMethod costMethod(const QVariant &value);                      ///< its word
Trading::ReplacementState replacementState(const QVariant &value); ///< its word

} // namespace ColumnValue

} // namespace TradeModule
