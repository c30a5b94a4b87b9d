#include "terminal/Appearance.h"
#include "terminal/Environment.h"

#include <gmock/gmock.h>

#include <QApplication>

int main(int argc, char *argv[])
{
    Terminal::useExchangeTime();
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    ::testing::InitGoogleMock(&argc, argv);
    QApplication application(argc, argv);
    Terminal::setAppearance(&application);
    return RUN_ALL_TESTS();
}
