#include "trading/TradingCalendar.h"

#include "trading/ShippedHolidays.h"

#include <QFile>
#include <QStandardPaths>
#include <QStringList>

namespace Trading {

namespace {

constexpr int mostDays = 31; // of a holiday: a wrong year closes the exchanges for no longer

struct Holiday
{
    TradingDate first;
    TradingDate last;
};

std::optional<TradingDate> dayOf(const QString &text)
{
    QString digits = text.trimmed();
    if (digits.size() == 10 && digits[4] == QLatin1Char('-') && digits[7] == QLatin1Char('-')) {
        digits.remove(7, 1).remove(4, 1);
    }
    return TradingDate::ofText(digits);
}

bool hasDigit(const QString &text)
{
    return !text.isEmpty() && text[0].isDigit();
}

/// A holiday of one day has its name where another has its last day.
std::optional<CalendarFault::Reason> read(const QString &line, std::vector<Holiday> *holidays)
{
    const QStringList cells = line.split(QLatin1Char(','));
    const std::optional<TradingDate> first = dayOf(cells[0]);
    const QString second = cells.value(1).trimmed();
    const std::optional<TradingDate> last = hasDigit(second) ? dayOf(second) : first;
    if (!first || !last) {
        return CalendarFault::Reason::NoDays;
    }
    if (*last < *first) {
        return CalendarFault::Reason::Backwards;
    }
    if (first->plusDays(mostDays) < *last) {
        return CalendarFault::Reason::TooLong;
    }
    holidays->push_back({*first, *last});
    return std::nullopt;
}

} // namespace

TradingCalendar TradingCalendar::shipped()
{
    TradingCalendar calendar;
    calendar.add(shippedHolidays, QStringLiteral("holidays.csv"));
    return calendar;
}

std::optional<CalendarFault> TradingCalendar::add(const QByteArray &text, const QString &path)
{
    std::vector<Holiday> holidays;
    const QStringList lines = QString::fromUtf8(text).split(QLatin1Char('\n'));
    for (int number = 0; number < lines.size(); ++number) {
        const QString line = lines[number].section(QLatin1Char('#'), 0, 0).trimmed();
        const auto wrong = line.isEmpty() ? std::nullopt : read(line, &holidays);
        if (wrong) {
            return CalendarFault{path, number + 1, *wrong, line};
        }
    }
    for (const Holiday &holiday : holidays) {
        m_years.insert(holiday.first.number() / 10000);
        for (TradingDate day = holiday.first; day <= holiday.last; day = day.plusDays(1)) {
            m_holidays.insert(day);
        }
    }
    return std::nullopt;
}

std::optional<CalendarFault> TradingCalendar::addFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? add(file.readAll(), path)
                                          : std::optional(CalendarFault{path, 0, {}, file.errorString()});
}

QString TradingCalendar::usersFile()
{
    const QString named = qEnvironmentVariable("TRADING_HOLIDAYS");
    return named.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                                 QStringLiteral("/trading/holidays.csv")
                           : named;
}

TradingCalendar TradingCalendar::ofUser(std::optional<CalendarFault> *fault)
{
    TradingCalendar calendar = shipped();
    const bool isNamed = qEnvironmentVariableIsSet("TRADING_HOLIDAYS");
    if (isNamed || QFile::exists(usersFile())) {
        const std::optional<CalendarFault> wrong = calendar.addFile(usersFile());
        if (fault != nullptr) {
            *fault = wrong;
        }
    }
    return calendar;
}

bool TradingCalendar::isTradingDay(TradingDate day) const
{
    return day.calendarDate().dayOfWeek() <= Qt::Friday && !m_holidays.contains(day);
}

} // namespace Trading
