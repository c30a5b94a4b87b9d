#include "terminal/intake/IntakePlan.h"

#include "terminal/services/BusInstance.h"

namespace Terminal {

QStringList moduleWords(const IntakePlan &plan)
{
    QStringList words{QStringLiteral("--ledger"), plan.places.ledger, QStringLiteral("--lang"),
                      plan.language};
    if (!plan.busAddress.isEmpty()) {
        words << QStringLiteral("--bus") << plan.busAddress;
    }
    return words;
}

QProcessEnvironment environmentOf(const IntakePlan &plan)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!plan.busInstance.isEmpty()) {
        environment.insert(QLatin1String(busInstanceVariable), plan.busInstance);
    }
    return environment;
}

} // namespace Terminal
