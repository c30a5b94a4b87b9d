#pragma once

#include "terminal/bars/BarImport.h"
#include "terminal/bars/LedgerFills.h"

#include <QString>
#include <QStringList>

#include <optional>

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

/// Compares the days of bars, or of their minutes, with the trades of a ledger. A trade is not compared with
/// its minute: a ledger's times need not be the exchange's.
///
/// One for each look at files: what the ledger holds is asked for once, for one file the trades of its code
/// alone, as an account may have a million, for several those of all.
class LedgerComparison
{
public:
    LedgerComparison(LedgerOfTrades ledger, int files, GoesOn goesOn)
        : m_ledger(std::move(ledger)),
          m_files(files),
          m_goesOn(std::move(goesOn))
    {
    }

    /// Fails when the ledger cannot be read. Blocks, see ledgerFills(). Requires no more calls than there are
    /// files.
    Loaded<LedgerSays> of(const BarImportPlan &plan);

private:
    const LedgerOfTrades m_ledger;
    const int m_files;
    const GoesOn m_goesOn;
    std::optional<Loaded<FillsBySecurity>> m_fills;
};

} // namespace Terminal
