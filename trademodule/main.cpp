#include "trademodule/cli/Command.h"
#include "trading/ExchangeTime.h"
#include "trading/HiddenPasswords.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    const bool hasExchangeTime = Trading::enterExchangeTime();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("trademodule"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TRADEMODULE_VERSION));
    const QStringList arguments = QCoreApplication::arguments();
    Trading::hidePasswords(argc, argv);
    return TradeModule::runProgram(arguments, hasExchangeTime);
}
