#include "terminal/data/BarFile.h"

#include "terminal/data/CsvFile.h"
#include "terminal/data/TradingHours.h"
#include "trading/ClockTime.h"

#include <QCoreApplication>

#include <cmath>
#include <optional>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("BarFile", source);
}

QString quoted(const char *source, const QByteArray &field)
{
    return text(source).arg(QString::fromUtf8(field.left(40)));
}

/// The time of hhmm, whose first digit may be missing.
std::optional<Trading::ClockTime> readTime(const QByteArray &field)
{
    constexpr int mostDigits = 4;
    return field.size() <= mostDigits ? Trading::ClockTime::ofText(QString::fromLatin1(field)) : std::nullopt;
}

bool readNumber(const QByteArray &field, double *value)
{
    bool isNumber = false;
    *value = field.toDouble(&isNumber);
    return isNumber && std::isfinite(*value);
}

/// Reads the five numbers that every bar has after its time stamp.
QString readPrices(const QList<QByteArray> &fields, Bar *bar)
{
    double *const values[] = {&bar->open, &bar->high, &bar->low, &bar->close, &bar->volume};
    for (int i = 0; i < 5; ++i) {
        if (!readNumber(fields.at(i + 1), values[i])) {
            return quoted("\"%1\" is not a number", fields.at(i + 1));
        }
    }
    return {};
}

QString contradiction(const Bar &bar)
{
    if (bar.high < bar.low) {
        return text("the high is below the low");
    }
    if (bar.open > bar.high || bar.open < bar.low) {
        return text("the open is outside of low and high");
    }
    if (bar.close > bar.high || bar.close < bar.low) {
        return text("the close is outside of low and high");
    }
    return bar.volume < 0 ? text("the volume is negative") : QString();
}

QString takePrices(const QList<QByteArray> &fields, Bar bar, Bars *bars)
{
    QString error = readPrices(fields, &bar);
    if (error.isEmpty()) {
        error = contradiction(bar);
    }
    if (error.isEmpty()) {
        bars->push_back(bar);
    }
    return error;
}

QString takeDay(const QList<QByteArray> &fields, Bars *bars)
{
    const auto date = Trading::TradingDate::ofText(QString::fromLatin1(fields.first()));
    if (!date) {
        return quoted("\"%1\" is not a date of the form yyyymmdd", fields.first());
    }
    Bar bar;
    bar.date = date->number();
    if (!bars->empty() && bar.date <= bars->back().date) {
        return quoted("the day %1 is not later than the one before", fields.first());
    }
    return takePrices(fields, bar, bars);
}

QString takeMinute(const QList<QByteArray> &fields, std::int32_t date, Bars *bars)
{
    const auto time = readTime(fields.first());
    if (!time) {
        return quoted("\"%1\" is not a time of the form hhmm", fields.first());
    }
    Bar bar;
    bar.date = date;
    bar.minute = time->minute();
    if (!isTradingMinute(bar.minute)) {
        return quoted("the time %1 is outside of the trading hours", fields.first());
    }
    if (!bars->empty() && bar.minute <= bars->back().minute) {
        return quoted("the time %1 is not later than the one before", fields.first());
    }
    return takePrices(fields, bar, bars);
}

Loaded<Bars> loaded(const QString &path, const QString &error, Bars bars)
{
    if (!error.isEmpty()) {
        return Loaded<Bars>::failure(error);
    }
    if (bars.empty()) {
        return Loaded<Bars>::failure(text("%1: holds no bars").arg(path));
    }
    return bars;
}

} // namespace

Loaded<Bars> readDailyBars(const QString &path)
{
    Bars bars;
    const QString error =
        readCsv(path, "date,open,high,low,close,volume",
                [&bars](const QList<QByteArray> &fields) { return takeDay(fields, &bars); });
    return loaded(path, error, std::move(bars));
}

Loaded<Bars> readMinuteBars(const QString &path, std::int32_t date)
{
    Bars bars;
    const QString error =
        readCsv(path, "time,open,high,low,close,volume",
                [&bars, date](const QList<QByteArray> &fields) { return takeMinute(fields, date, &bars); });
    return loaded(path, error, std::move(bars));
}

} // namespace Terminal
