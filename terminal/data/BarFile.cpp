#include "terminal/data/BarFile.h"

#include "terminal/data/BarSheet.h"

#include <QCoreApplication>
#include <QFile>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("BarFile", source);
}

enum class BarSpan { Day, Minute };

Loaded<BarSheet> readSheet(const QString &path, BarSpan span, const BarHints &hints)
{
    const auto sheet = readBarFile(path, hints);
    if (!sheet) {
        return sheet;
    }
    const bool isOfMinutes = span == BarSpan::Minute;
    if (sheet.value().isOfMinutes != isOfMinutes) {
        return Loaded<BarSheet>::failure(isOfMinutes
                                             ? text("%1: holds bars of days, not of minutes").arg(path)
                                             : text("%1: holds bars of minutes, not of days").arg(path));
    }
    return sheet;
}

Loaded<Bars> barsOf(const Loaded<BarSheet> &sheet)
{
    return sheet ? Loaded<Bars>(sheet.value().bars) : Loaded<Bars>::failure(sheet.error());
}

} // namespace

Loaded<BarSheet> readBarFile(const QString &path, const BarHints &hints)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return Loaded<BarSheet>::failure(text("%1: cannot be read: %2").arg(path, file.errorString()));
    }
    return readBarSheet(file.readAll(), path, hints);
}

Loaded<BarSheet> readDailySheet(const QString &path, const QString &code)
{
    BarHints hints;
    hints.security = SecurityCode::of(code);
    return readSheet(path, BarSpan::Day, hints);
}

Loaded<Bars> readDailyBars(const QString &path, const QString &code)
{
    return barsOf(readDailySheet(path, code));
}

Loaded<BarSheet> readMinuteSheet(const QString &path, std::int32_t date, const QString &code)
{
    BarHints hints;
    hints.security = SecurityCode::of(code);
    hints.day = Trading::TradingDate::ofNumber(date);
    return readSheet(path, BarSpan::Minute, hints);
}

Loaded<Bars> readMinuteBars(const QString &path, std::int32_t date, const QString &code)
{
    return barsOf(readMinuteSheet(path, date, code));
}

} // namespace Terminal
