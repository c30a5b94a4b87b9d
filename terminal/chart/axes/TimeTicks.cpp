#include "terminal/chart/axes/TimeTicks.h"

#include "terminal/chart/axes/BarSpan.h"
#include "trading/ClockTime.h"

#include <algorithm>
#include <iterator>

namespace Terminal {

namespace {

/// A step of a calendar axis: so many years, months or days.
struct CalendarStep
{
    int years;
    int months;
    int days;
    double averageDays; ///< calendar days of the step
};

constexpr CalendarStep calendarSteps[] = {
    {0, 0, 1, 1},       {0, 0, 7, 7},       {0, 1, 0, 30.4},   {0, 3, 0, 91.3},
    {0, 6, 0, 182.6},   {1, 0, 0, 365.2},   {2, 0, 0, 730.5},  {5, 0, 0, 1826.2},
    {10, 0, 0, 3652.4}, {20, 0, 0, 7304.8}, {50, 0, 0, 18262}, {100, 0, 0, 36524},
};

constexpr int minuteSteps[] = {1, 2, 5, 10, 15, 30, 60, 120};

QDate calendarDay(const Bar &bar)
{
    return dayOf(bar).calendarDate();
}

/// The start of the step that holds `date`.
QDate stepStart(const QDate &date, const CalendarStep &step)
{
    if (step.years > 0) {
        constexpr int firstYear = 1; // there is no year 0 to begin in
        return {std::max(firstYear, date.year() / step.years * step.years), 1, 1};
    }
    if (step.months > 0) {
        return {date.year(), (date.month() - 1) / step.months * step.months + 1, 1};
    }
    return step.days == 7 ? date.addDays(1 - date.dayOfWeek()) : date;
}

QDate nextStep(const QDate &start, const CalendarStep &step)
{
    return start.addYears(step.years).addMonths(step.months).addDays(step.days);
}

QString dateLabel(const QDate &date, const QDate &previous, const CalendarStep &step)
{
    if (date.year() != previous.year()) {
        return QString::number(date.year());
    }
    return date.toString(step.months > 0 ? QStringLiteral("yyyy-MM") : QStringLiteral("MM-dd"));
}

/// In the most ordinary part of the range: a gap of years in the bars does not make the others rarer.
double calendarDaysPerBar(const Bars &bars, const BarRange &range)
{
    constexpr size_t mostParts = 15;
    constexpr size_t leastBars = 10; // two weeks of days, so that a weekend counts
    const size_t count = range.end - range.first;
    const size_t parts = std::clamp<size_t>(count / leastBars, 1, mostParts);
    std::vector<double> rates;
    for (size_t part = 0; part < parts; ++part) {
        const size_t first = range.first + count * part / parts;
        const size_t next = std::min(range.first + count * (part + 1) / parts, range.end - 1);
        const auto days = calendarDay(bars[first]).daysTo(calendarDay(bars[next]));
        rates.push_back(static_cast<double>(days) / static_cast<double>(std::max<size_t>(next - first, 1)));
    }
    std::sort(rates.begin(), rates.end());
    return rates[rates.size() / 2];
}

const CalendarStep &fittingStep(const Bars &bars, const BarRange &range, double spacing)
{
    const double daysPerBar = calendarDaysPerBar(bars, range);
    const auto *const fitting =
        std::find_if(std::begin(calendarSteps), std::end(calendarSteps),
                     [=](const CalendarStep &step) { return step.averageDays >= spacing * daysPerBar; });
    return fitting == std::end(calendarSteps) ? *std::prev(fitting) : *fitting;
}

bool isFarEnough(const std::vector<TimeTick> &ticks, size_t bar, double spacing)
{
    return ticks.empty() || static_cast<double>(bar - ticks.back().bar) >= spacing * 0.8;
}

std::vector<TimeTick> calendarTicks(const Bars &bars, const BarRange &range, double spacing)
{
    const CalendarStep &step = fittingStep(bars, range, spacing);
    std::vector<TimeTick> ticks;
    const auto end = bars.begin() + static_cast<std::ptrdiff_t>(range.end);
    auto bar = bars.begin() + static_cast<std::ptrdiff_t>(range.first);
    QDate previous = calendarDay(*bar);
    while (bar != end) {
        const QDate next = nextStep(stepStart(calendarDay(*bar), step), step);
        bar = std::lower_bound(bar, end, next,
                               [](const Bar &one, const QDate &day) { return calendarDay(one) < day; });
        const auto number = static_cast<size_t>(bar - bars.begin());
        if (bar != end && isFarEnough(ticks, number, spacing)) {
            ticks.push_back({number, dateLabel(calendarDay(*bar), previous, step)});
            previous = calendarDay(*bar);
        }
    }
    return ticks;
}

/// "09:31"
QString clockText(int minute)
{
    constexpr int hoursAndMinutes = 5;
    return Trading::ClockTime::ofMinute(minute).value().colonText().left(hoursAndMinutes);
}

/// A day's axis has the lunch break inside it: the end of the morning names both sides.
QString minuteLabel(const Bars &bars, size_t bar)
{
    const QString label = clockText(bars[bar].minute);
    const bool lunchFollows = bar + 1 < bars.size() && bars[bar + 1].minute > bars[bar].minute + 60;
    return lunchFollows ? label + QLatin1Char('/') + clockText(bars[bar + 1].minute - 1) : label;
}

std::vector<TimeTick> minuteTicks(const Bars &bars, const BarRange &range, double spacing)
{
    const auto *const fitting = std::find_if(std::begin(minuteSteps), std::end(minuteSteps),
                                             [spacing](int step) { return step >= spacing; });
    const int step = fitting == std::end(minuteSteps) ? *std::prev(fitting) : *fitting;
    std::vector<TimeTick> ticks;
    for (size_t bar = range.first; bar < range.end; ++bar) {
        if (bars[bar].minute % step == 0 && isFarEnough(ticks, bar, spacing)) {
            ticks.push_back({bar, minuteLabel(bars, bar)});
        }
    }
    return ticks;
}

} // namespace

std::vector<TimeTick> timeTicks(const Bars &bars, const BarSpan &span, double spacing)
{
    const BarRange range = barsInView(span, bars.size());
    if (range.first == range.end) {
        return {};
    }
    return bars[range.first].minute > 0 ? minuteTicks(bars, range, spacing)
                                        : calendarTicks(bars, range, spacing);
}

QString timeText(const Bar &bar)
{
    const QString date = dayOf(bar).dashedText();
    return bar.minute > 0 ? date + QLatin1Char(' ') + clockText(bar.minute) : date;
}

} // namespace Terminal
