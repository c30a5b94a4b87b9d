#include "trademodule/ExchangeTime.h"

namespace TradeModule {

int dateNumber(const QDate &date)
{
    return date.year() * 10000 + date.month() * 100 + date.day();
}

QDate dateOfNumber(int number)
{
    return {number / 10000, number / 100 % 100, number % 100};
}

int timeNumber(const QTime &time)
{
    return time.hour() * 1000000 + time.minute() * 10000 + time.second() * 100 + time.msec() / 10;
}

int today()
{
    return dateNumber(QDate::currentDate());
}

} // namespace TradeModule
