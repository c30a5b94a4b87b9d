#include "terminal/data/AmountCheck.h"

#include "trading/TradingUnits.h"

#include <algorithm>

namespace Terminal {

namespace {

/// Yuan in one of what amounts are written in.
constexpr double amountUnits[] = {1, 1e3, 1e4, 1e8};

/// Only where the unit of the volume is named: lots and hundred millions come to the same.
constexpr double million = 1e6;

/// So many times may a mean price be above a bar's high, or below its low, and still fit it.
constexpr double fitting = 1.01;

/// Likewise where prices are adjusted. Units differ by ten times at least.
constexpr double fittingAdjusted = 2.2;

/// Beyond so many times a bar between others that fit has a wrong amount or volume.
constexpr double wrongAmongFitting = 1.05;

/// Beyond so many times it is no matter of adjustment or of trades outside of the market.
constexpr double wrongAnywhere = 3;

/// How the numbers of a file come to yuan for a share.
struct Reading
{
    VolumeUnit unit;
    double yuanPerShare;  ///< of amount ÷ volume that is 1
    std::size_t bars = 0; ///< that fit it
};

std::vector<Reading> readings(const VolumeFacts &known)
{
    std::vector<Reading> all;
    for (const VolumeUnit unit :
         known.named ? std::vector{*known.named} : std::vector{VolumeUnit::Shares, VolumeUnit::Lots}) {
        const double shares = sharesIn(unit, known.kind);
        for (const double yuan : amountUnits) {
            all.push_back({unit, yuan / shares});
        }
        if (known.named) {
            all.push_back({unit, million / shares});
        }
    }
    return all;
}

/// Bars with the lowest and the highest price that was paid for one share or bond.
Bars paidPrices(Bars bars, Trading::SecurityKind kind)
{
    constexpr double mostInterest = 1.06; // since the last coupon, which comes once or twice a year
    constexpr auto faceValue = static_cast<double>(Trading::faceValueOfBond);
    for (Bar &bar : bars) {
        if (kind == Trading::SecurityKind::Bond) {
            bar.high *= mostInterest;
        } else if (kind == Trading::SecurityKind::Repo) {
            bar.low = faceValue;
            bar.high = faceValue;
        }
    }
    return bars;
}

bool canBeChecked(const Bar &bar, double amount)
{
    return bar.volume > 0 && amount > 0 && bar.low > 0;
}

/// How many times the mean price is above the bar's high or below its low, after what rounding may have done
/// to small volumes and amounts; 1 or less for a bar that it fits, 0 for one that cannot be checked.
double excess(const Bar &bar, double amount, double yuanPerShare)
{
    constexpr double mostRounding = 0.6; // of the last unit
    if (!canBeChecked(bar, amount)) {
        return 0;
    }
    const double meanPrice = amount / bar.volume * yuanPerShare;
    const double rounding = mostRounding / bar.volume + mostRounding / amount;
    return std::max(bar.low / meanPrice, meanPrice / bar.high) / (1 + rounding);
}

std::vector<double> excesses(const Bars &bars, const std::vector<double> &amounts, double yuanPerShare)
{
    std::vector<double> all;
    all.reserve(bars.size());
    for (std::size_t i = 0; i < bars.size(); ++i) {
        all.push_back(excess(bars[i], amounts[i], yuanPerShare));
    }
    return all;
}

void count(const Bars &bars, const std::vector<double> &amounts, double limit, Reading *reading)
{
    for (const double excess : excesses(bars, amounts, reading->yuanPerShare)) {
        reading->bars += excess > 0 && excess <= limit ? 1 : 0;
    }
}

/// Adjusted prices are off for many bars in a row: there only a single one far off is wrong.
std::optional<std::size_t> wrongBar(const std::vector<double> &excesses, bool isAdjusted)
{
    const std::size_t count = excesses.size();
    for (std::size_t i = 0; i < count; ++i) {
        const bool isAlone =
            (i == 0 || excesses[i - 1] <= fitting) && (i + 1 == count || excesses[i + 1] <= fitting);
        const bool isFar = excesses[i] > wrongAnywhere;
        if ((isFar && (isAlone || !isAdjusted)) ||
            (excesses[i] > wrongAmongFitting && isAlone && !isAdjusted)) {
            return i;
        }
    }
    return std::nullopt;
}

} // namespace

AmountCheck checkAmounts(const Bars &bars, const std::vector<double> &amounts, const VolumeFacts &known)
{
    constexpr std::size_t clearly = 5; // times as many as any other
    const Bars paid = paidPrices(bars, known.kind);
    std::vector<Reading> all = readings(known);
    for (Reading &reading : all) {
        count(paid, amounts, known.prices == PriceKind::Adjusted ? fittingAdjusted : fitting, &reading);
    }
    std::sort(all.begin(), all.end(), [](const Reading &a, const Reading &b) { return a.bars > b.bars; });
    const Reading &best = all[0];
    std::size_t checked = 0;
    for (std::size_t i = 0; i < bars.size(); ++i) {
        checked += canBeChecked(paid[i], amounts[i]) ? 1 : 0;
    }
    AmountCheck check;
    const bool isRaw = best.bars * 10 >= checked * 9;
    const bool isClear = best.bars > 0 && best.bars >= all[1].bars * clearly;
    if (!isClear || (!isRaw && best.bars < clearly)) {
        return check;
    }
    check.unit = best.unit;
    check.isAdjusted = !isRaw || known.prices == PriceKind::Adjusted;
    check.wrongBar = wrongBar(excesses(paid, amounts, best.yuanPerShare), check.isAdjusted);
    return check;
}

} // namespace Terminal
