#include "terminal/intake/IntakePlan.h"

#include "terminal/services/BusInstance.h"
#include "trading/HiddenPasswords.h"

namespace Terminal {

QStringList moduleWords(const IntakePlan &plan)
{
    QStringList words{QStringLiteral("--lang"), plan.language};
    if (!plan.busAddress.isEmpty()) {
        words << QStringLiteral("--bus") << plan.busAddress;
    }
    return words;
}

QProcessEnvironment environmentOf(const IntakePlan &plan)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // An address may have a password, and everybody on the machine sees the arguments of a program.
    environment.insert(QLatin1String(Trading::ledgerVariable), plan.places.ledger);
    if (!plan.busInstance.isEmpty()) {
        environment.insert(QLatin1String(busInstanceVariable), plan.busInstance);
    }
    return environment;
}

} // namespace Terminal
