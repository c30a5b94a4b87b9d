#include "terminal/bars/LedgerComparison.h"

#include "terminal/bars/LedgerFills.h"
#include "terminal/data/BarAggregation.h"

namespace Terminal {

Loaded<LedgerSays> comparedWithLedger(const LedgerOfTrades &ledger, const BarImportPlan &plan)
{
    if (ledger.place.isEmpty()) {
        return LedgerSays();
    }
    const auto fills = ledgerFills(ledger.moduleProgram, ledger.place, plan.security.id());
    if (!fills) {
        return Loaded<LedgerSays>::failure(fills.error());
    }
    const Bars days = plan.sheet.isOfMinutes ? toDays(plan.sheet.bars) : plan.sheet.bars;
    const QStringList warnings = fillWarnings(days, fills.value());
    return LedgerSays{warnings, warnings.isEmpty() ? fillSummary(days, fills.value()) : QString()};
}

} // namespace Terminal
