#include "terminal/data/BarRemarks.h"

#include "terminal/data/BarChecks.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <map>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("BarRemarks", source);
}

/// Minutes from one bar to the next, as most have it.
int usualStep(const Bars &minutes)
{
    std::map<int, int> counts;
    for (std::size_t i = 1; i < minutes.size(); ++i) {
        ++counts[minutes[i].minute - minutes[i - 1].minute];
    }
    const auto most = std::max_element(counts.begin(), counts.end(),
                                       [](const auto &a, const auto &b) { return a.second < b.second; });
    return most == counts.end() ? 1 : most->first;
}

/// Of many bars it is known that they are of weeks, see problemAmong(); of a few it looks so.
QString fewBarsApart(const BarSheet &sheet)
{
    constexpr std::size_t fewest = 3;
    constexpr int week = 7;
    if (sheet.isOfMinutes || sheet.bars.size() < fewest) {
        return {};
    }
    const int days = usualDistance(sheet.bars);
    return days >= week ? text("Most bars are %1 days apart; the terminal takes each for one day.").arg(days)
                        : QString();
}

/// Bars with fewer than a lot: a sale of odd shares makes one, here and there.
QString volumesBelowALot(const BarSheet &sheet)
{
    constexpr int fewest = 5;
    constexpr int oneIn = 20;
    const auto lot = static_cast<double>(Trading::lotOf(sheet.kind));
    int traded = 0;
    int below = 0;
    for (const Bar &bar : sheet.bars) {
        traded += bar.volume > 0 ? 1 : 0;
        below += bar.volume > 0 && bar.volume < lot ? 1 : 0;
    }
    const bool mayBeLots = sheet.volumeUnit == VolumeUnit::Shares &&
                           sheet.volumeEvidence != VolumeEvidence::Amounts && below >= fewest &&
                           below * oneIn >= traded;
    return mayBeLots ? text("%1 of %2 bars have a volume of less than a lot, %3: is it in lots?")
                           .arg(below)
                           .arg(traded)
                           .arg(lot)
                     : QString();
}

/// So many volumes of lots are not all whole tens or hundreds by chance.
QString volumesOfWholeLots(const BarSheet &sheet)
{
    constexpr int enough = 15;
    const auto lot = static_cast<double>(Trading::lotOf(sheet.kind));
    int traded = 0;
    int whole = 0;
    for (const Bar &bar : sheet.bars) {
        traded += bar.volume > 0 ? 1 : 0;
        whole += bar.volume > 0 && std::fmod(bar.volume, lot * lot) == 0 ? 1 : 0;
    }
    const bool mayBeShares = sheet.volumeUnit == VolumeUnit::Lots &&
                             sheet.volumeEvidence != VolumeEvidence::Amounts && traded >= enough &&
                             whole == traded;
    return mayBeShares
               ? text("All volumes are whole multiples of %1: are they in shares, and not in lots?").arg(lot)
               : QString();
}

} // namespace

QStringList barRemarks(const BarSheet &sheet)
{
    QStringList remarks;
    if (sheet.prices == PriceKind::Adjusted) {
        remarks.append(
            text("The prices are adjusted: the cost and the trades of an account do not lie on them."));
    }
    if (sheet.isOfMinutes && usualStep(sheet.bars) > 1) {
        remarks.append(text("These are bars of %1 minutes; the terminal takes each for one minute.")
                           .arg(usualStep(sheet.bars)));
    }
    for (const QString &remark : {fewBarsApart(sheet), volumesBelowALot(sheet), volumesOfWholeLots(sheet)}) {
        remarks += remark.isEmpty() ? QStringList() : QStringList(remark);
    }
    return remarks;
}

} // namespace Terminal
