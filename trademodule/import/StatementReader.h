#pragma once

#include "trademodule/import/ReadOptions.h"
#include "trademodule/import/SheetRow.h"
#include "trademodule/import/StatementContents.h"
#include "trademodule/import/StatementRefused.h"

namespace TradeModule {

/// Called now and then while a statement is read, with how many of its rows are done; how many there are is
/// estimated from its bytes.
using RowProgress = std::function<void(qint64 rows, qint64 of)>;

/// Reads what a broker's client exported, by the names in its header lines. StatementRefused when the file as
/// a whole is no such statement, lacks a date or a code that `options` does not give, or is of several
/// accounts and `options` chooses none.
StatementContents readStatementFile(const QString &path, const ReadOptions &options,
                                    const RowProgress &progress = {});

/// The same for a text.
StatementContents readStatement(const QString &text, const ReadOptions &options);

} // namespace TradeModule
