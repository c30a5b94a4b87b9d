#include "terminal/Appearance.h"
#include "trading/ExchangeTime.h"

#include <gmock/gmock.h>

#include <QApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    if (!Trading::enterExchangeTime()) {
        std::fprintf(stderr, "this machine does not know the time zone Asia/Shanghai\n");
        return 1;
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    ::testing::InitGoogleMock(&argc, argv);
    QApplication application(argc, argv);
    Terminal::setAppearance(&application);
    return RUN_ALL_TESTS();
}
