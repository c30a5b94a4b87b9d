#include "terminal/bars/BarImportWords.h"

#include "terminal/data/OwnForm.h"
#include "trading/TradingUnits.h"

#include <QCoreApplication>

#include <algorithm>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("BarsCommand", source);
}

/// Lots of shares go without saying how many they are.
QString unitName(VolumeUnit unit, Trading::SecurityKind kind)
{
    const qint64 lot = Trading::lotOf(kind);
    if (unit == VolumeUnit::Lots && lot != Trading::sharesOfLot) {
        return text("lots of %1").arg(lot);
    }
    return titleOf(unit);
}

QString takeCode(const QString &value, BarImportOptions *options)
{
    options->hints.security = SecurityCode::of(value);
    return options->hints.security ? QString()
                                   : text("--code must be six digits, with .SH or .SZ after them: 600519.SH");
}

QString takeVolume(const QString &value, BarImportOptions *options)
{
    options->hints.volume = volumeUnitOf(value);
    return options->hints.volume ? QString() : text("--volume must be shares or lots");
}

QString takeDay(const QString &value, BarImportOptions *options)
{
    options->hints.day = Trading::TradingDate::ofText(value);
    return options->hints.day ? QString() : text("--day must be a date of the form yyyymmdd");
}

} // namespace

QString takeImportOption(const QString &name, const QString &value, BarImportOptions *options)
{
    if (name == QLatin1String("code")) {
        return takeCode(value, options);
    }
    if (name == QLatin1String("volume")) {
        return takeVolume(value, options);
    }
    if (name == QLatin1String("day")) {
        return takeDay(value, options);
    }
    options->name = value;
    return {};
}

QString rangeText(const BarSheet &sheet)
{
    return (sheet.isOfMinutes ? text("%1 bars of minutes, %2 to %3") : text("%1 bars of days, %2 to %3"))
        .arg(QString::number(sheet.bars.size()), dayOf(sheet.bars.front()).dashedText(),
             dayOf(sheet.bars.back()).dashedText());
}

QString unitText(const BarSheet &sheet)
{
    const QString unit = unitName(sheet.volumeUnit, sheet.kind);
    switch (sheet.volumeEvidence) {
    case VolumeEvidence::OwnForm:
        return text("volume in %1, as files of this form have it").arg(unit);
    case VolumeEvidence::Header:
        return text("volume in %1, as the header says").arg(unit);
    case VolumeEvidence::Amounts:
        return text("volume in %1, as amount ÷ price says").arg(unit);
    case VolumeEvidence::Told:
        return text("volume in %1, as you say").arg(unit);
    }
    return {};
}

QByteArrayList previewRows(const BarSheet &sheet)
{
    constexpr std::size_t firstRows = 3;
    Bars shown(sheet.bars.begin(),
               sheet.bars.begin() + static_cast<std::ptrdiff_t>(std::min(firstRows, sheet.bars.size())));
    if (sheet.bars.size() > firstRows) {
        shown.push_back(sheet.bars.back());
    }
    const QByteArray rows = sheet.isOfMinutes ? minuteText(shown) : dailyText(shown);
    return rows.trimmed().split('\n');
}

} // namespace Terminal
