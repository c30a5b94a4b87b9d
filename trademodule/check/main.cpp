#include "trademodule/check/CheckProgram.h"
#include "trading/ExchangeTime.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    const bool hasExchangeTime = Trading::enterExchangeTime();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("trademodule-check"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TRADEMODULE_VERSION));
    return TradeModule::runCheckProgram(QCoreApplication::arguments(), hasExchangeTime);
}
