#include "trademodule/ExchangeTime.h"
#include "trademodule/cli/Command.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    TradeModule::enterExchangeTime();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("trademodule"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TRADEMODULE_VERSION));
    return TradeModule::runProgram(QCoreApplication::arguments());
}
