#pragma once

#include "trademodule/import/StatementReader.h"
#include "trademodule/ledger/Ledger.h"

namespace TradeModule {

struct ImportOptions
{
    ReadOptions reading;
    bool skipsBadRows = false; ///< else one bad row stops the import
    Ledger::Mode mode = Ledger::Mode::Keep;
};

/// What an import did or, as a dry run, would do.
struct ImportReport
{
    StatementContents contents;
    Booked booked;
    bool isRefused = false; ///< nothing was booked, because of bad rows
};

/// Reads the statement in a file and books it. An Error names the file.
ImportReport importStatement(const QString &path, const ImportOptions &options, Ledger *ledger,
                             const Ledger::Progress &progress = {});

/// The report in sentences, one to a line, for the person who imported.
QStringList describe(const ImportReport &report, const QString &path, const ImportOptions &options);

} // namespace TradeModule
