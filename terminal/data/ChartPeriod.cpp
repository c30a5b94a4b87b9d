#include "terminal/data/ChartPeriod.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace Terminal {

namespace {

struct PeriodRow
{
    ChartPeriod period;
    const char *word;
    const char *title;
    int overlayNumber;
};

constexpr PeriodRow rows[] = {
    {ChartPeriod::Day, "day", QT_TRANSLATE_NOOP("ChartPeriod", "Day"), 4},
    {ChartPeriod::Week, "week", QT_TRANSLATE_NOOP("ChartPeriod", "Week"), 5},
    {ChartPeriod::Month, "month", QT_TRANSLATE_NOOP("ChartPeriod", "Month"), 6},
    {ChartPeriod::Minute, "minute", QT_TRANSLATE_NOOP("ChartPeriod", "Minute"), 21},
};

const PeriodRow &rowOf(ChartPeriod period)
{
    return *std::find_if(std::begin(rows), std::end(rows),
                         [period](const PeriodRow &row) { return row.period == period; });
}

} // namespace

QString periodWord(ChartPeriod period)
{
    return QLatin1String(rowOf(period).word);
}

QString periodTitle(ChartPeriod period)
{
    return QCoreApplication::translate("ChartPeriod", rowOf(period).title);
}

int overlayPeriod(ChartPeriod period)
{
    return rowOf(period).overlayNumber;
}

} // namespace Terminal
