#include "trading/MachineLanguage.h"

#include <QLocale>

namespace Trading {

QString machineLanguage()
{
    for (const char *const variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const QByteArray locale = qgetenv(variable);
        if (!locale.isEmpty()) {
            return locale.startsWith("zh") ? QStringLiteral("zh") : QStringLiteral("en");
        }
    }
    return QLocale::system().language() == QLocale::Chinese ? QStringLiteral("zh") : QStringLiteral("en");
}

} // namespace Trading
