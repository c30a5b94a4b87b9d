#pragma once

#include "terminal/data/Bar.h"
#include "terminal/data/Loaded.h"

#include <cstdint>

namespace Terminal {

/// Reads daily bars: a file of `date,open,high,low,close,volume`, dates yyyymmdd, each day later than
/// the one before. A line that does not fit fails the whole file; nothing is guessed.
Loaded<Bars> readDailyBars(const QString &path);

/// Reads the minute bars of the trading day `date` (yyyymmdd): a file of
/// `time,open,high,low,close,volume`, times hhmm inside the trading hours, each later than the one before.
Loaded<Bars> readMinuteBars(const QString &path, std::int32_t date);

} // namespace Terminal
