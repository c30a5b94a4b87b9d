#include "trading/LedgerAddress.h"

#include <QUrl>

namespace Trading {

bool isDatabaseAddress(const QString &ledger)
{
    return ledger.startsWith(QLatin1String("postgresql://")) ||
           ledger.startsWith(QLatin1String("postgres://"));
}

QString shownLedger(const QString &ledger)
{
    return isDatabaseAddress(ledger) ? QUrl(ledger).toDisplayString() : ledger;
}

} // namespace Trading
