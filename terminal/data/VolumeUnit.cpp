#include "terminal/data/VolumeUnit.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <iterator>

namespace Terminal {

namespace {

struct UnitRow
{
    VolumeUnit unit;
    double count; ///< of shares or lots
    bool isInLots;
    const char *words; ///< the first one is the one that is written
};

constexpr double thousand = 1000;
constexpr double tenThousand = 10000;
constexpr double hundredMillion = 1e8;

constexpr UnitRow rows[] = {
    {VolumeUnit::Shares, 1, false, "shares share 股 份 张"},
    {VolumeUnit::Lots, 1, true, "lots lot 手"},
    {VolumeUnit::ThousandShares, thousand, false, "1000shares 千股 千份 千张"},
    {VolumeUnit::HundredMillionShares, hundredMillion, false, "100000000shares 亿股 亿份 亿张"},
    {VolumeUnit::TenThousandShares, tenThousand, false, "10000shares 万股 万份 万张"},
    {VolumeUnit::TenThousandLots, tenThousand, true, "10000lots 万手"},
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

QString text(const char *source)
{
    return QCoreApplication::translate("VolumeUnit", source);
}

} // namespace

double sharesIn(VolumeUnit unit, Trading::SecurityKind kind)
{
    const UnitRow &row = rowOf(unit);
    return row.isInLots ? row.count * static_cast<double>(Trading::lotOf(kind)) : row.count;
}

bool isInLots(VolumeUnit unit)
{
    return rowOf(unit).isInLots;
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

QString titleOf(VolumeUnit unit)
{
    switch (unit) {
    case VolumeUnit::Shares:
        return text("shares");
    case VolumeUnit::Lots:
        return text("lots");
    case VolumeUnit::ThousandShares:
        return text("thousand shares");
    case VolumeUnit::HundredMillionShares:
        return text("hundred million shares");
    case VolumeUnit::TenThousandShares:
        return text("ten thousand shares");
    case VolumeUnit::TenThousandLots:
        return text("ten thousand lots");
    }
    return {};
}

} // namespace Terminal
