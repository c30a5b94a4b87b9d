#pragma once

#include "terminal/data/BarSheet.h"

namespace Terminal {

/// Reads a file of bars of days or of minutes, see readBarSheet().
Loaded<BarSheet> readBarFile(const QString &path, const BarHints &hints);

/// Reads daily bars of the security `code` ("600519" or "600519.SH"), by default of any. The own form is
/// `date,open,high,low,close,volume`, dates yyyymmdd, oldest first, volume in shares.
Loaded<Bars> readDailyBars(const QString &path, const QString &code = {});

/// Reads the minute bars of the trading day `date` (yyyymmdd). The own form is
/// `time,open,high,low,close,volume`, times hhmm inside the trading hours.
Loaded<Bars> readMinuteBars(const QString &path, std::int32_t date, const QString &code = {});

/// The same with what the files say besides their bars: prices that are adjusted, rows that are no bars.
Loaded<BarSheet> readDailySheet(const QString &path, const QString &code = {});
Loaded<BarSheet> readMinuteSheet(const QString &path, std::int32_t date, const QString &code = {});

} // namespace Terminal
