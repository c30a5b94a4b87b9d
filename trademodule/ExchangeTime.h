#pragma once

#include <QDateTime>

namespace TradeModule {

/// A date as the number yyyymmdd.
int dateNumber(const QDate &date);

/// The date of the number yyyymmdd; invalid when there is none.
QDate dateOfNumber(int number);

/// A time of day as the number hhmmsscc (cc: hundredths).
int timeNumber(const QTime &time);

/// Today as yyyymmdd: the day of the calendar, also when the exchange is closed.
int today();

} // namespace TradeModule
