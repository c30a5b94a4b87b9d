#include "trading/TradingDate.h"

#include <algorithm>

namespace Trading {

namespace {

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

} // namespace

std::optional<TradingDate> TradingDate::ofText(const QString &text)
{
    const bool isNumber = text.size() == 8 && std::all_of(text.begin(), text.end(), isDigit);
    return isNumber ? ofNumber(text.toInt()) : std::nullopt;
}

std::optional<TradingDate> TradingDate::ofCalendar(const QDate &date)
{
    return of(date.year(), date.month(), date.day());
}

TradingDate TradingDate::today()
{
    return ofCalendar(QDate::currentDate()).value();
}

std::string TradingDate::digits() const
{
    constexpr std::size_t width = 8;
    std::string digits = std::to_string(m_number);
    return digits.insert(0, width - digits.size(), '0');
}

QString TradingDate::dashedText() const
{
    return text().insert(6, QLatin1Char('-')).insert(4, QLatin1Char('-'));
}

QDate TradingDate::calendarDate() const
{
    return {m_number / 10000, m_number / 100 % 100, m_number % 100};
}

TradingDate TradingDate::plusDays(int days) const
{
    return ofCalendar(calendarDate().addDays(days)).value_or(days < 0 ? first() : last());
}

} // namespace Trading
