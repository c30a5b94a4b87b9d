#include "terminal/data/BarChecks.h"

#include "terminal/data/TradingHours.h"

#include <QCoreApplication>
#include <QDate>

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("BarChecks", source);
}

/// A decimal point in the wrong place makes at least ten of one; no bar of a day comes near.
constexpr double tooManyTimes = 8;

/// Below so many bars, chance may look like a rule.
constexpr int enoughBars = 15;

bool differFar(double a, double b)
{
    return a >= b * tooManyTimes || b >= a * tooManyTimes;
}

bool areAdjusted(const Bars &bars)
{
    return std::any_of(bars.begin(), bars.end(), [](const Bar &bar) { return bar.low < 0; });
}

QString weekend(const Bar &bar)
{
    return isClosedWeekend(dayOf(bar))
               ? text("%1 is a Saturday or Sunday: no trading day").arg(dayOf(bar).dashedText())
               : QString();
}

QString wrongPrice(const Bar &bar)
{
    if (bar.low <= 0) {
        return text("a price is zero");
    }
    if (bar.high >= std::max(bar.open, bar.close) * tooManyTimes) {
        return text("the high is many times open and close: is its decimal point in the right place?");
    }
    if (bar.low * tooManyTimes <= std::min(bar.open, bar.close)) {
        return text("the low is a fraction of open and close: is its decimal point in the right place?");
    }
    return {};
}

/// Shares were split in ten before 1996, and after a long suspension a price may be any.
bool mayJump(const Bar &before, const Bar &bar)
{
    constexpr int firstDayWithoutSuchSplits = 19960101;
    constexpr int longSuspension = 15; // days
    return bar.date < firstDayWithoutSuchSplits || dayOf(before).plusDays(longSuspension) < dayOf(bar);
}

QString jump(const Bar &before, const Bar &bar)
{
    return differFar(before.close, bar.open) && !mayJump(before, bar)
               ? text("prices are many times those of the bar before, or a fraction: are decimal points in "
                      "the "
                      "right place?")
               : QString();
}

LineProblem wrongRow(const BarRows &rows, bool areRates)
{
    const bool arePlainPrices = !areRates && !areAdjusted(rows.bars);
    const bool areOfManyDays = dayOf(rows.bars.front()) < dayOf(rows.bars.back()); // one may be a rehearsal's
    for (std::size_t i = 0; i < rows.bars.size(); ++i) {
        const Bar &bar = rows.bars[i];
        QString what = areOfManyDays ? weekend(bar) : QString();
        if (what.isEmpty() && arePlainPrices) {
            what = wrongPrice(bar);
        }
        if (what.isEmpty() && arePlainPrices && i > 0) {
            what = jump(rows.bars[i - 1], bar);
        }
        if (!what.isEmpty()) {
            return {rows.lines[i], what};
        }
    }
    return {};
}

bool areOpenAndCloseExchanged(const Bars &bars)
{
    int near = 0;
    int far = 0;
    for (std::size_t i = 1; i < bars.size(); ++i) {
        const double gap = std::abs(bars[i].open - bars[i - 1].close);
        const double span = std::abs(bars[i].close - bars[i - 1].open);
        near += gap < span ? 1 : 0;
        far += gap > span ? 1 : 0;
    }
    return near + far >= enoughBars && far > near + near / 2;
}

bool contradictPreviousCloses(const BarRows &rows)
{
    constexpr int enoughPairs = 5;
    constexpr double rounding = 0.0051;
    int known = 0;
    int equal = 0;
    for (std::size_t i = 1; i < rows.previousCloses.size(); ++i) {
        const double previous = rows.previousCloses[i];
        known += previous > 0 ? 1 : 0;
        equal += previous > 0 && std::abs(previous - rows.bars[i - 1].close) < rounding ? 1 : 0;
    }
    return !rows.haveTimes && known >= enoughPairs && equal * 2 < known;
}

/// Some files of minutes have in each row what was traded since the day began.
bool areVolumesSums(const BarRows &rows)
{
    int rises = 0;
    for (std::size_t i = 1; i < rows.bars.size(); ++i) {
        const Bar &before = rows.bars[i - 1];
        const Bar &bar = rows.bars[i];
        if (bar.date == before.date && bar.volume < before.volume) {
            return false;
        }
        rises += bar.date == before.date && bar.volume > before.volume ? 1 : 0;
    }
    return rows.haveTimes && rises >= enoughBars;
}

bool areLongerThanDays(const BarRows &rows)
{
    constexpr int daysOfAWeekApart = 5;
    return !rows.haveTimes && static_cast<int>(rows.bars.size()) >= enoughBars &&
           usualDistance(rows.bars) >= daysOfAWeekApart;
}

/// Calendar days. Most bars are of the same month as the one before: these need no calendar.
qint64 daysBetween(const Bar &first, const Bar &second)
{
    constexpr int daysOfAMonth = 100; // in yyyymmdd
    return first.date / daysOfAMonth == second.date / daysOfAMonth
               ? second.date - first.date
               : dayOf(first).calendarDate().daysTo(dayOf(second).calendarDate());
}

} // namespace

int usualDistance(const Bars &bars)
{
    std::vector<qint64> distances;
    distances.reserve(bars.size());
    for (std::size_t i = 1; i < bars.size(); ++i) {
        distances.push_back(daysBetween(bars[i - 1], bars[i]));
    }
    const auto middle = distances.begin() + static_cast<std::ptrdiff_t>(distances.size() / 2);
    std::nth_element(distances.begin(), middle, distances.end());
    return static_cast<int>(*middle);
}

LineProblem problemAmong(const BarRows &rows, Trading::SecurityKind kind)
{
    const bool areRates = kind == Trading::SecurityKind::Repo;
    if (const LineProblem problem = wrongRow(rows, areRates)) {
        return problem;
    }
    if (areLongerThanDays(rows)) {
        return {rows.lines.front(),
                text("these are bars of weeks or months; the terminal makes those of days")};
    }
    if (areVolumesSums(rows)) {
        return {rows.lines.front(), text("the volumes only grow over the day: they are sums since its begin, "
                                         "not those of each minute")};
    }
    if (contradictPreviousCloses(rows)) {
        return {rows.lines.front(), text("most previous closes are not the close of the day before: are the "
                                         "columns what their names say?")};
    }
    if (!areRates && areOpenAndCloseExchanged(rows.bars)) {
        return {rows.lines.front(), text("the columns of open and close look exchanged")};
    }
    return {};
}

} // namespace Terminal
