#include "terminal/Environment.h"

#include <QByteArray>
#include <QString>

namespace Terminal {

bool hasDisplay()
{
#ifdef Q_OS_MACOS
    return true;
#else
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariable("QT_QPA_PLATFORM", QStringLiteral("offscreen")) != QLatin1String("offscreen");
#endif
}

void useScreenlessPlatformWithoutDisplay()
{
    if (!hasDisplay()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
}

} // namespace Terminal
