#include "trademodule/cli/Command.h"
#include "trading/ExchangeTime.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    const bool hasExchangeTime = Trading::enterExchangeTime();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("trademodule"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TRADEMODULE_VERSION));
    return TradeModule::runProgram(QCoreApplication::arguments(), hasExchangeTime);
}
