#include "trademodule/import/CellValue.h"

#include <QRegularExpression>

#include <cmath>

namespace TradeModule::CellValue {

namespace {

bool isAllDigits(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar character) {
        return character >= QLatin1Char('0') && character <= QLatin1Char('9');
    });
}

QString withoutWrapping(QString cell)
{
    if (cell.startsWith(QLatin1String("=\""))) {
        cell.remove(0, 1);
    }
    if (cell.size() >= 2 && cell.startsWith(QLatin1Char('"')) && cell.endsWith(QLatin1Char('"'))) {
        cell = cell.mid(1, cell.size() - 2);
    }
    if (cell.startsWith(QLatin1Char('\''))) {
        cell.remove(0, 1); // a spreadsheet's mark for text
    }
    return cell;
}

QString digitsOfNumber(QString cell)
{
    for (const QChar dropped : {QLatin1Char(','), QLatin1Char(' '), QLatin1Char('+')}) {
        cell.remove(dropped);
    }
    cell.remove(QChar(0xA5)); // ¥, which ￥ is normalised to
    cell.replace(QChar(0x2212), QLatin1Char('-'));
    const bool isBracketed = cell.startsWith(QLatin1Char('(')) && cell.endsWith(QLatin1Char(')'));
    return isBracketed ? QLatin1Char('-') + cell.mid(1, cell.size() - 2) : cell;
}

/// A day that a statement can be of: there was no exchange before.
std::optional<TradingDate> believable(std::optional<TradingDate> date)
{
    const bool isBelievable =
        date && *date >= TradingDate::of(1990, 1, 1) && *date < TradingDate::of(2100, 1, 1);
    return isBelievable ? date : std::nullopt;
}

/// The day of a spreadsheet's number of days.
std::optional<TradingDate> dateOfDays(int days)
{
    return TradingDate::ofCalendar(QDate(1899, 12, 30).addDays(days));
}

std::optional<TradingDate> dateOfDigits(const QString &digits)
{
    switch (digits.size()) {
    case 5:
        return believable(dateOfDays(digits.toInt()));
    case 8:
    case 14:
        return believable(TradingDate::ofText(digits.left(8)));
    default:
        return std::nullopt;
    }
}

std::optional<ClockTime> timeOfDayFraction(const QString &cell)
{
    bool isNumber = false;
    const double fraction = cell.toDouble(&isNumber);
    if (!isNumber || fraction < 0 || fraction >= 1) {
        return std::nullopt;
    }
    constexpr int secondsPerDay = 24 * 60 * 60;
    const int seconds = std::min(static_cast<int>(std::lround(fraction * secondsPerDay)), secondsPerDay - 1);
    return ClockTime::of(seconds / 3600, seconds / 60 % 60, seconds % 60);
}

} // namespace

QString cleaned(const QString &cell)
{
    return withoutWrapping(cell.normalized(QString::NormalizationForm_KC).trimmed()).trimmed();
}

bool isEmpty(const QString &cell)
{
    const QString text = cleaned(cell);
    return std::all_of(text.begin(), text.end(),
                       [](QChar character) { return character == QLatin1Char('-'); });
}

std::optional<double> number(const QString &cell)
{
    if (isEmpty(cell)) {
        return 0.0;
    }
    bool isNumber = false;
    const double value = digitsOfNumber(cleaned(cell)).toDouble(&isNumber);
    return isNumber && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<Money> money(const QString &cell)
{
    const std::optional<double> value = number(cell);
    return value ? Money::ofYuan(*value) : std::nullopt;
}

int decimals(const QString &cell)
{
    const QString text = digitsOfNumber(cleaned(cell));
    const int point = text.indexOf(QLatin1Char('.'));
    return point < 0 ? 0 : text.size() - point - 1;
}

std::optional<TradingDate> date(const QString &cell)
{
    const QString text = cleaned(cell);
    if (isAllDigits(text)) {
        return dateOfDigits(text);
    }
    static const QRegularExpression separated(
        QStringLiteral("^(\\d{4})\\s*[-/.年]\\s*(\\d{1,2})\\s*[-/.月]\\s*(\\d{1,2})\\s*日?(?:[ T].*)?$"));
    static const QRegularExpression joined(QStringLiteral("^(\\d{8})[ T].*$"));
    if (const auto match = separated.match(text); match.hasMatch()) {
        return believable(
            TradingDate::of(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt()));
    }
    if (const auto match = joined.match(text); match.hasMatch()) {
        return believable(TradingDate::ofText(match.captured(1)));
    }
    return std::nullopt;
}

std::optional<ClockTime> time(const QString &cell)
{
    const QString text = cleaned(cell).section(QLatin1Char(' '), -1);
    if (isEmpty(cell) || text == QLatin1String("0")) {
        return ClockTime();
    }
    if (isAllDigits(text)) {
        return ClockTime::ofText(text);
    }
    static const QRegularExpression separated(
        QStringLiteral("^(\\d{1,2})[:时](\\d{1,2})(?:[:分](\\d{1,2})(?:[.:](\\d{1,2})\\d*)?秒?)?分?$"));
    if (const auto match = separated.match(text); match.hasMatch()) {
        return ClockTime::of(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt(),
                             match.captured(4).leftJustified(2, QLatin1Char('0')).toInt());
    }
    return timeOfDayFraction(text);
}

std::optional<Code> code(const QString &cell)
{
    static const QRegularExpression form(
        QStringLiteral("^(?:(SH|SZ|BJ|HK)[.:]?)?(\\d{1,6})(?:[.](SH|SZ|BJ|HK|SS|XSHG|XSHE))?$"),
        QRegularExpression::CaseInsensitiveOption);
    const auto match = form.match(cleaned(cell));
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    const QString market = match.captured(1) + match.captured(3);
    const bool isHongKong = market.compare(QLatin1String("HK"), Qt::CaseInsensitive) == 0;
    return Code{match.captured(2).rightJustified(isHongKong ? 5 : 6, QLatin1Char('0')), market.toUpper()};
}

} // namespace TradeModule::CellValue
