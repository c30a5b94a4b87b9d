#pragma once

#include <QDateTime>

namespace TradeModule {

/// Makes exchange time (Asia/Shanghai) the local time of this process, so that "today" is the same day
/// as on the charts, wherever the machine stands. Call it first in main().
void enterExchangeTime();

/// A date as the number yyyymmdd.
int dateNumber(const QDate &date);

/// The date of the number yyyymmdd; invalid when there is none.
QDate dateOfNumber(int number);

/// A time of day as the number hhmmsscc (cc: hundredths).
int timeNumber(const QTime &time);

/// Today as yyyymmdd: the day of the calendar, also when the exchange is closed.
int today();

} // namespace TradeModule
