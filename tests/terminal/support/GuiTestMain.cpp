#include "terminal/Appearance.h"
#include "tests/support/LeaksOfALibrary.h"
#include "trading/ExchangeTime.h"

#include <gmock/gmock.h>

#include <QApplication>

#include <cstdio>
#include <memory>

namespace {

/// Its screen is never given back, and finding that out, with the names of who took it, would cost every test
/// a seventh of a second.
std::unique_ptr<QApplication> makeApplication(int &argc, char *argv[])
{
    const LeaksOfALibrary screen;
    return std::make_unique<QApplication>(argc, argv);
}

} // namespace

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
    const auto application = makeApplication(argc, argv);
    Terminal::setAppearance(application.get());
    return RUN_ALL_TESTS();
}
