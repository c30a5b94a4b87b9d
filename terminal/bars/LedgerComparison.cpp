#include "terminal/bars/LedgerComparison.h"

#include "terminal/data/BarAggregation.h"

namespace Terminal {

Loaded<std::vector<Fill>> LedgerComparison::fillsOf(const Trading::SecurityId &security)
{
    constexpr int askedOneByOne = 3;
    if (m_asked < askedOneByOne) {
        ++m_asked;
        return ledgerFills(m_ledger.moduleProgram, m_ledger.place, security);
    }
    if (!m_all) {
        m_all = allLedgerFills(m_ledger.moduleProgram, m_ledger.place);
    }
    return *m_all ? Loaded<std::vector<Fill>>(m_all->value().value(security))
                  : Loaded<std::vector<Fill>>::failure(m_all->error());
}

Loaded<LedgerSays> LedgerComparison::of(const BarImportPlan &plan)
{
    if (m_ledger.place.isEmpty()) {
        return LedgerSays();
    }
    const auto fills = fillsOf(plan.security.id());
    if (!fills) {
        return Loaded<LedgerSays>::failure(fills.error());
    }
    const Bars days = plan.sheet.isOfMinutes ? toDays(plan.sheet.bars) : plan.sheet.bars;
    const QStringList warnings = fillWarnings(days, fills.value());
    return LedgerSays{warnings, warnings.isEmpty() ? fillSummary(days, fills.value()) : QString()};
}

} // namespace Terminal
