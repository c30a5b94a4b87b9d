#include "terminal/bars/FillCheck.h"

#include <QCoreApplication>

#include <algorithm>
#include <optional>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("FillCheck", source);
}

/// Statements round the price of a trade that was made of several.
constexpr double rounding = 0.0051;

const Bar *barOf(const Bars &days, Trading::TradingDate day)
{
    const auto bar =
        std::lower_bound(days.begin(), days.end(), day.number(),
                         [](const Bar &candidate, std::int32_t date) { return candidate.date < date; });
    return bar != days.end() && bar->date == day.number() ? &*bar : nullptr;
}

/// Trades before the first and after the last bar say nothing.
bool isWithin(const Bars &days, const Fill &fill)
{
    return !days.empty() && fill.day >= dayOf(days.front()) && fill.day <= dayOf(days.back());
}

/// Trades of one kind: how many, and the first one.
struct Oddities
{
    int count = 0;
    std::optional<Fill> first;

    void add(const Fill &fill)
    {
        ++count;
        first = first ? first : fill;
    }
};

QString shown(double price)
{
    return QString::number(price, 'f', 2);
}

QString outsideText(const Oddities &outside, int compared, const Bars &days)
{
    const Fill &fill = *outside.first;
    const Bar &bar = *barOf(days, fill.day);
    return text("%1 of %2 trades lie outside of their day's prices, first %3: %4, but the day had %5 to %6. "
                "Are "
                "the bars adjusted, or of another security?")
        .arg(outside.count)
        .arg(compared)
        .arg(fill.day.dashedText(), shown(fill.price), shown(bar.low), shown(bar.high));
}

QString tooLargeText(const Oddities &tooLarge, const Bars &days)
{
    const Fill &fill = *tooLarge.first;
    return text("%1 trades are larger than their day's volume, first %2: %3 shares of %4. Is the volume in "
                "lots?")
        .arg(tooLarge.count)
        .arg(fill.day.dashedText())
        .arg(fill.quantity)
        .arg(barOf(days, fill.day)->volume, 0, 'f', 0);
}

QString withoutBarText(const Oddities &withoutBar)
{
    return text("%1 trades are on days without a bar, first %2. Are these bars of another security?")
        .arg(withoutBar.count)
        .arg(withoutBar.first->day.dashedText());
}

} // namespace

QStringList fillWarnings(const Bars &days, const std::vector<Fill> &fills)
{
    Oddities outside;
    Oddities tooLarge;
    Oddities withoutBar;
    int compared = 0;
    for (const Fill &fill : fills) {
        if (!isWithin(days, fill)) {
            continue;
        }
        const Bar *const bar = barOf(days, fill.day);
        if (bar == nullptr) {
            withoutBar.add(fill);
            continue;
        }
        ++compared;
        if (fill.price < bar->low - rounding || fill.price > bar->high + rounding) {
            outside.add(fill);
        }
        if (static_cast<double>(fill.quantity) > bar->volume) {
            tooLarge.add(fill);
        }
    }
    QStringList warnings;
    if (outside.first) {
        warnings.append(outsideText(outside, compared, days));
    }
    if (tooLarge.first) {
        warnings.append(tooLargeText(tooLarge, days));
    }
    if (withoutBar.first) {
        warnings.append(withoutBarText(withoutBar));
    }
    return warnings;
}

QString fillSummary(const Bars &days, const std::vector<Fill> &fills)
{
    if (fills.empty()) {
        return text("The ledger has no trades of this security.");
    }
    const auto compared =
        std::count_if(fills.begin(), fills.end(), [&days](const Fill &fill) { return isWithin(days, fill); });
    return compared == 0
               ? text("All %1 trades of the ledger are before or after these bars; none is compared.")
                     .arg(fills.size())
               : text("%1 trades compared, all within their bars.").arg(compared);
}

} // namespace Terminal
