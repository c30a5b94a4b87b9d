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
/// One for each plan: what the ledger holds is asked for once. The trades of the first securities are asked
/// for one by one, as an account may have a million; from then on those of all are known.
class LedgerComparison
{
public:
    explicit LedgerComparison(LedgerOfTrades ledger) : m_ledger(std::move(ledger)) {}

    /// Fails when the ledger cannot be read. Blocks, see ledgerFills().
    Loaded<LedgerSays> of(const BarImportPlan &plan);

private:
    Loaded<std::vector<Fill>> fillsOf(const Trading::SecurityId &security);

    const LedgerOfTrades m_ledger;
    int m_asked = 0;
    std::optional<Loaded<FillsBySecurity>> m_all;
};

} // namespace Terminal
