#pragma once

#include "terminal/data/Bar.h"
#include "terminal/data/ChartPeriod.h"
#include "terminal/data/SecurityList.h"

#include <QDir>

namespace Terminal {

/// What one chart shows: a security and its loaded bars.
struct ChartData
{
    Security security;
    ChartPeriod period = ChartPeriod::Day;
    Bars bars;
};

/// A folder of market data: `securities.csv`, `daily/<code>.csv` and `minute/<code>_<yyyymmdd>.csv`.
class DataFolder
{
public:
    static Loaded<DataFolder> open(const QString &path);

    const Securities &securities() const { return m_securities; }

    /// The recorded days of `code` as yyyymmdd, oldest first.
    std::vector<std::int32_t> minuteDays(const QString &code) const;

    /// Loads the bars of a security. `day` (yyyymmdd) names the day of a minute chart, 0 meaning the
    /// last recorded one; other periods ignore it.
    Loaded<ChartData> load(const QString &code, ChartPeriod period, std::int32_t day) const;

private:
    Loaded<Bars> loadBars(const QString &code, ChartPeriod period, std::int32_t day) const;
    Loaded<Bars> loadMinutes(const QString &code, std::int32_t day) const;

    QDir m_dir;
    Securities m_securities;
};

} // namespace Terminal
