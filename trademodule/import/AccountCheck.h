#pragma once

#include "trademodule/import/StatementContents.h"
#include "trademodule/ledger/StatementTable.h"

namespace TradeModule::AccountCheck {

/// A StatementRefused when a statement is of another account than those that were imported before.
/// Shareholder's codes are compared where both tell one of the same market.
void refuseAnother(const StatementContents &contents, const QVector<ImportedStatement> &before);

} // namespace TradeModule::AccountCheck
