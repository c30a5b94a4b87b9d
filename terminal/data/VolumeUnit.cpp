#include "terminal/data/VolumeUnit.h"

#include "trading/TradingUnits.h"

#include <QStringList>

#include <algorithm>
#include <iterator>

namespace Terminal {

namespace {

struct UnitRow
{
    VolumeUnit unit;
    double shares;
    const char *words; ///< the first one is the one that is written
};

constexpr double tenThousand = 10000;
constexpr auto lot = static_cast<double>(Trading::sharesOfLot);

constexpr UnitRow rows[] = {
    {VolumeUnit::Shares, 1, "shares share 股 份"},
    {VolumeUnit::Lots, lot, "lots lot 手"},
    {VolumeUnit::TenThousandShares, tenThousand, "10000shares 万股 万份"},
    {VolumeUnit::TenThousandLots, tenThousand *lot, "10000lots 万手"},
};

const UnitRow &rowOf(VolumeUnit unit)
{
    return *std::find_if(std::begin(rows), std::end(rows),
                         [unit](const UnitRow &row) { return row.unit == unit; });
}

QStringList wordsOf(const UnitRow &row)
{
    return QString::fromUtf8(row.words).split(QLatin1Char(' '));
}

} // namespace

double sharesIn(VolumeUnit unit)
{
    return rowOf(unit).shares;
}

std::optional<VolumeUnit> volumeUnitOf(const QString &word)
{
    const auto *const row = std::find_if(std::begin(rows), std::end(rows), [&word](const UnitRow &candidate) {
        return wordsOf(candidate).contains(word.trimmed().toLower());
    });
    return row == std::end(rows) ? std::nullopt : std::optional(row->unit);
}

QString wordOf(VolumeUnit unit)
{
    return wordsOf(rowOf(unit)).constFirst();
}

} // namespace Terminal
