#include "trademodule/cli/Command.h"
#include "trading/ExchangeTime.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstring>

/// A password in the ledger's address is not for everybody who lists the processes of this machine.
static void hidePasswords(int argc, char *argv[])
{
    for (int i = 1; i < argc; ++i) {
        char *const user = std::strstr(argv[i], "://");
        char *const end = user == nullptr ? nullptr : std::strrchr(user, '@');
        char *const password = end == nullptr ? nullptr : std::strchr(user + 3, ':');
        if (password != nullptr && password < end) {
            std::fill(password + 1, end, '*');
        }
    }
}

int main(int argc, char *argv[])
{
    const bool hasExchangeTime = Trading::enterExchangeTime();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("trademodule"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TRADEMODULE_VERSION));
    const QStringList arguments = QCoreApplication::arguments();
    hidePasswords(argc, argv);
    return TradeModule::runProgram(arguments, hasExchangeTime);
}
