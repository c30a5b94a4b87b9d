#include "trading/ClockTime.h"

#include <algorithm>

namespace Trading {

namespace {

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

} // namespace

std::optional<ClockTime> ClockTime::ofText(const QString &text)
{
    constexpr int fewestDigits = 3;
    constexpr int mostDigits = 8;
    if (text.size() < fewestDigits || text.size() > mostDigits ||
        !std::all_of(text.begin(), text.end(), isDigit)) {
        return std::nullopt;
    }
    const QString evenDigits = text.size() % 2 == 0 ? text : QLatin1Char('0') + text;
    return ofNumber(evenDigits.leftJustified(mostDigits, QLatin1Char('0')).toInt());
}

std::optional<ClockTime> ClockTime::ofClock(const QTime &time)
{
    return of(time.hour(), time.minute(), time.second(), time.msec() / 10);
}

ClockTime ClockTime::now()
{
    return ofClock(QTime::currentTime()).value();
}

std::string ClockTime::digits() const
{
    constexpr std::size_t width = 8;
    std::string digits = std::to_string(m_number);
    return digits.insert(0, width - digits.size(), '0');
}

QString ClockTime::colonText() const
{
    return text().left(6).insert(4, QLatin1Char(':')).insert(2, QLatin1Char(':'));
}

} // namespace Trading
