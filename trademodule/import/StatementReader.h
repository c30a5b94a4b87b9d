#pragma once

#include "trademodule/import/ReadOptions.h"
#include "trademodule/import/SheetRow.h"
#include "trademodule/import/StatementContents.h"

namespace TradeModule {

/// Reads what a broker's client exported, by the names in its header lines. An Error when the file as a whole
/// is no such statement, lacks a date or a code that `options` does not give, or is of several accounts and
/// `options` chooses none.
StatementContents readStatementFile(const QString &path, const ReadOptions &options,
                                    const ReadProgress &progress = {});

/// The same for a text.
StatementContents readStatement(const QString &text, const ReadOptions &options);

} // namespace TradeModule
