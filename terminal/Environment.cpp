#include "terminal/Environment.h"

#include <algorithm>
#include <ctime>

namespace Terminal {

namespace {

bool hasDisplay()
{
#ifdef Q_OS_MACOS
    return true;
#else
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
#endif
}

/// True for a run that opens no window.
bool opensNoWindow(const QString &argument)
{
    const QStringList words = {QStringLiteral("--snapshot"), QStringLiteral("--help"), QStringLiteral("-h"),
                               QStringLiteral("--version"), QStringLiteral("-v")};
    return words.contains(argument.section(QLatin1Char('='), 0, 0));
}

} // namespace

void useExchangeTime()
{
    qputenv("TZ", "Asia/Shanghai");
    tzset();
}

void useScreenlessPlatform(const QStringList &arguments)
{
    if (!hasDisplay() && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM") &&
        std::any_of(arguments.begin(), arguments.end(), opensNoWindow)) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
}

} // namespace Terminal
