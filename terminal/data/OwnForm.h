#pragma once

#include "terminal/data/Bar.h"
#include "terminal/data/SecurityList.h"

#include <QByteArray>

namespace Terminal {

/// The text of a file in the form that a data folder has: prices with two decimals, or as many as they have,
/// volume in shares.
QByteArray dailyText(const Bars &days);

/// Likewise of minutes; requires those of one day.
QByteArray minuteText(const Bars &minutes);

QByteArray securitiesText(const Securities &securities);

} // namespace Terminal
