#include "terminal/bars/LedgerComparison.h"

#include "terminal/data/BarAggregation.h"

namespace Terminal {

Loaded<LedgerSays> LedgerComparison::of(const BarImportPlan &plan)
{
    if (m_ledger.place.isEmpty()) {
        return LedgerSays();
    }
    if (!m_fills) {
        m_fills = ledgerFills(m_ledger.moduleProgram, m_ledger.place,
                              m_files == 1 ? plan.security.code : QString(), m_goesOn);
    }
    if (!*m_fills) {
        return Loaded<LedgerSays>::failure(m_fills->error());
    }
    const std::vector<Fill> fills = m_fills->value().value(plan.security.id());
    const Bars days = plan.sheet.isOfMinutes ? toDays(plan.sheet.bars) : plan.sheet.bars;
    const QStringList warnings = fillWarnings(days, fills);
    return LedgerSays{warnings, warnings.isEmpty() ? fillSummary(days, fills) : QString()};
}

} // namespace Terminal
