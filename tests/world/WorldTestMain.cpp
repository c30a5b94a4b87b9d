#include "tests/world/SimulatedTime.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QHashFunctions>

#include <cstdio>
#include <ctime>

namespace {

/// What programs of a world tell in their logs is of interest only where one is looked into.
void log(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
{
    if (type == QtFatalMsg || qEnvironmentVariableIsSet("TRADE_WORLD_LOG")) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(text));
    }
}

} // namespace

int main(int argc, char *argv[])
{
    qSetGlobalQHashSeed(0); // the order of a hash is that of its keys alone
    qputenv("TZ", "Asia/Shanghai");
    tzset();
    ::testing::InitGoogleMock(&argc, argv);
    qInstallMessageHandler(&log);
    QCoreApplication::setEventDispatcher(new World::SimulatedTime); // the application's own from now on
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
