#include "terminal/data/BarRemarks.h"

#include <QCoreApplication>

#include <algorithm>
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
    return remarks;
}

} // namespace Terminal
