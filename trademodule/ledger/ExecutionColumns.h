#pragma once

#include "trademodule/ledger/Execution.h"

#include "trademodule/ledger/Rows.h"
#include <QVariantList>

namespace TradeModule {

/// How executions stand in the table `execution`.
namespace ExecutionColumns {

/// The columns to select from `execution e` for an execution of a security that is known. Reading texts costs
/// most, so that its code and market are left out.
QString ofKnownSecurity();
/// The same with those, from `execution e` and `security s`.
QString withSecurity();

/// How many columns ofKnownSecurity() has.
int count();

/// A row of ofKnownSecurity().
Execution read(const Rows &row, const SecurityId &security);
/// A row of withSecurity().
Execution read(const Rows &row);

/// A statement that writes an execution, and its values. `statementId` is null for a paper trade.
QString insertion();
QVariantList insertedValues(const Execution &execution, qint64 securityId, const QVariant &statementId);

} // namespace ExecutionColumns

} // namespace TradeModule
