#pragma once

#include "trademodule/import/HoldingsCheck.h"
#include "trademodule/import/StatementReader.h"
#include "trademodule/ledger/Ledger.h"

namespace TradeModule {

struct ImportOptions
{
    ReadOptions reading;
    bool skipsBadRows = false; ///< else one bad row stops the import
    Doubt doubt = Doubt::Ask;
    QString mark; ///< kept with the import, see Ledger::importOfMark(); may be empty
    Ledger::Mode mode = Ledger::Mode::Keep;
};

/// What an import did or, as a dry run, would do.
struct ImportReport
{
    StatementContents contents;
    Booked booked;
    std::optional<HoldingDisagreement> holdingDisagreement;
    bool isRefused = false; ///< nothing was booked, because of bad rows or of entries in doubt
};

/// Reads the statement in a file and books it. What the ledger keeps of the user's profile is used, and what
/// `options` has of it is kept. An Error names the file.
ImportReport importStatement(const QString &path, const ImportOptions &options, Ledger *ledger,
                             const RowProgress &readProgress = {}, const Ledger::Progress &progress = {});

/// Something that the person who imports should know.
struct Remark
{
    int line; ///< of the statement; 0 when it is of none
    QString text;
};

QVector<Remark> remarksOn(const ImportReport &report);

/// Why nothing was imported. Requires report.isRefused.
QString refusalOf(const ImportReport &report);

/// The report in sentences, one to a line, for the person who imported.
QStringList describe(const ImportReport &report, const QString &path, const ImportOptions &options);

} // namespace TradeModule
