#pragma once

#include "terminal/bars/BarImport.h"

#include <QString>
#include <QStringList>

namespace Terminal {

/// A ledger whose trades bars are compared with, and the program that reads it.
struct LedgerOfTrades
{
    QString moduleProgram;
    QString place; ///< empty: there is nothing to compare with
};

/// What the trades of a ledger say of bars.
struct LedgerSays
{
    QStringList warnings;
    QString summary; ///< without warnings
};

/// Compares the days of bars, or of their minutes, with the trades of the ledger, and fails when it cannot be
/// read. A trade is not compared with its minute: a ledger's times need not be the exchange's. Blocks, see
/// ledgerFills().
Loaded<LedgerSays> comparedWithLedger(const LedgerOfTrades &ledger, const BarImportPlan &plan);

} // namespace Terminal
