#include "trademodule/import/CellValue.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace TradeModule::CellValue {

namespace {

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

bool isAllDigits(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), &isDigit);
}

/// True of a cell that needs no cleaning, as most do: a statement may have millions.
bool isClean(const QString &cell)
{
    constexpr ushort firstIdeograph = 0x4E00;
    constexpr ushort lastIdeograph = 0x9FFF;
    return std::all_of(cell.begin(), cell.end(), [](QChar character) {
        const ushort code = character.unicode();
        const bool isPlain = code > ' ' && code < 0x7F && code != '"' && code != '\'' && code != '=';
        return isPlain || (code >= firstIdeograph && code <= lastIdeograph);
    });
}

/// ="…", also with blanks after the sign or inside the quotes.
QString withoutWrapping(QString cell)
{
    if (cell.startsWith(QLatin1Char('=')) && cell.mid(1).trimmed().startsWith(QLatin1Char('"'))) {
        cell = cell.mid(1).trimmed();
    }
    if (cell.size() >= 2 && cell.startsWith(QLatin1Char('"')) && cell.endsWith(QLatin1Char('"'))) {
        cell = cell.mid(1, cell.size() - 2);
    }
    if (cell.startsWith(QLatin1Char('\''))) {
        cell.remove(0, 1); // a spreadsheet's mark for text
    }
    return cell;
}

/// A comma that does not part thousands is a decimal one: to drop it would make a hundred of one.
bool hasDecimalComma(const QString &cell)
{
    constexpr int group = 3;
    int digits = group; // since the last comma, or none was seen
    bool isAfterComma = false;
    for (const QChar character : cell) {
        if (character == QLatin1Char(',')) {
            if (isAfterComma && digits != group) {
                return true;
            }
            isAfterComma = true;
            digits = 0;
        } else if (character == QLatin1Char('.')) {
            break;
        } else if (character.isDigit()) {
            ++digits;
        }
    }
    return isAfterComma && digits != group;
}

QString digitsOfNumber(QString cell)
{
    if (hasDecimalComma(cell)) {
        return cell; // no number
    }
    for (const QChar dropped : {QLatin1Char(','), QLatin1Char(' '), QLatin1Char('+')}) {
        cell.remove(dropped);
    }
    cell.remove(QChar(0xA5)); // ¥, which ￥ is normalised to
    cell.replace(QChar(0x2212), QLatin1Char('-'));
    const bool isBracketed = cell.startsWith(QLatin1Char('(')) && cell.endsWith(QLatin1Char(')'));
    return isBracketed ? QLatin1Char('-') + cell.mid(1, cell.size() - 2) : cell;
}

/// A day that a statement can be of: there was no exchange before, and nothing is dealt tomorrow.
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

/// "45292.395833": days and a fraction of one.
const QRegularExpression &daysWithFraction()
{
    static const QRegularExpression form(QStringLiteral("^(\\d{5})(\\.\\d+)$"));
    return form;
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

enum class HalfDay { Unsaid, Morning, Afternoon };

struct HalfDayWord
{
    const char *word;
    HalfDay half;
};

constexpr HalfDayWord halfDayWords[] = {{"上午", HalfDay::Morning},
                                        {"下午", HalfDay::Afternoon},
                                        {"AM", HalfDay::Morning},
                                        {"PM", HalfDay::Afternoon}};

/// Takes the word for the half of the day out of a text.
HalfDay takeHalfDay(QString *text)
{
    for (const HalfDayWord &row : halfDayWords) {
        const QString word = QString::fromUtf8(row.word);
        if (text->contains(word, Qt::CaseInsensitive)) {
            text->remove(word, Qt::CaseInsensitive);
            *text = text->trimmed();
            return row.half;
        }
    }
    return HalfDay::Unsaid;
}

std::optional<int> hourOf(int hour, HalfDay half)
{
    if (half == HalfDay::Unsaid) {
        return hour;
    }
    if (hour > 12) {
        return half == HalfDay::Afternoon ? std::optional(hour) : std::nullopt; // "下午 14:30"
    }
    return hour % 12 + (half == HalfDay::Afternoon ? 12 : 0);
}

/// The time of hh:mm:ss, the form that nearly all have; the pattern for the others is slow.
std::optional<ClockTime> timeOfEightCharacters(const QString &text)
{
    const auto pair = [&text](int at) { return text[at].digitValue() * 10 + text[at + 1].digitValue(); };
    for (int i = 0; i < 8; ++i) {
        if (i % 3 == 2 ? text[i] != QLatin1Char(':') : !isDigit(text[i])) {
            return std::nullopt;
        }
    }
    return ClockTime::of(pair(0), pair(3), pair(6));
}

std::optional<ClockTime> clockTime(QString text)
{
    if (text.size() == 8 && text[2] == QLatin1Char(':')) {
        if (const auto time = timeOfEightCharacters(text)) {
            return time;
        }
    }
    const HalfDay half = takeHalfDay(&text);
    static const QRegularExpression separated(
        QStringLiteral("^(\\d{1,2})[:时](\\d{1,2})(?:[:分](\\d{1,2})(?:[.:](\\d{1,2})\\d*)?秒?)?分?$"));
    const auto match = separated.match(text);
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    const std::optional<int> hour = hourOf(match.captured(1).toInt(), half);
    return hour ? ClockTime::of(*hour, match.captured(2).toInt(), match.captured(3).toInt(),
                                match.captured(4).leftJustified(2, QLatin1Char('0')).toInt())
                : std::nullopt;
}

/// What stands after the date of a cell, without the zone that some write; empty for no date, or nothing
/// after it.
QString afterDate(const QString &text)
{
    static const QRegularExpression form(QStringLiteral(
        "^(?:\\d{4}\\s*[-/.年]\\s*\\d{1,2}\\s*[-/.月]\\s*\\d{1,2}\\s*日?|\\d{8})[ T]+(\\S.*)$"));
    const auto match = form.match(text);
    return match.hasMatch() ? match.captured(1).trimmed() : QString();
}

} // namespace

QString cleaned(const QString &cell)
{
    return isClean(cell)
               ? cell
               : withoutWrapping(cell.normalized(QString::NormalizationForm_KC).trimmed()).trimmed();
}

bool isEmpty(const QString &cell)
{
    const QString text = cleaned(cell);
    return std::all_of(text.begin(), text.end(),
                       [](QChar character) { return character == QLatin1Char('-'); });
}

std::optional<double> number(const QString &cell)
{
    bool isNumber = false;
    if (!cell.isEmpty() && isDigit(cell[cell.size() - 1])) { // no need to clean most of them
        const double value = cell.toDouble(&isNumber);
        if (isNumber && std::isfinite(value)) {
            return value;
        }
    }
    if (isEmpty(cell)) {
        return 0.0;
    }
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
    if (const auto match = daysWithFraction().match(text); match.hasMatch()) {
        return believable(dateOfDays(match.captured(1).toInt()));
    }
    return std::nullopt;
}

std::optional<ClockTime> time(const QString &cell)
{
    const QString whole = cleaned(cell);
    if (whole.isEmpty() || isEmpty(whole) || whole == QLatin1String("0")) {
        return ClockTime();
    }
    if (const auto beside = timeBesideDate(whole)) {
        return beside;
    }
    const QString after = afterDate(whole);
    const QString text = after.isEmpty() ? whole : after;
    if (isAllDigits(text)) {
        constexpr int dateDigits = 8;
        return ClockTime::ofText(text.size() == 14 ? text.mid(dateDigits) : text);
    }
    if (const auto time = clockTime(text)) {
        return time;
    }
    return timeOfDayFraction(text);
}

std::optional<ClockTime> timeBesideDate(const QString &cell)
{
    const QString text = cleaned(cell);
    if (const QString after = afterDate(text); !after.isEmpty()) {
        return isAllDigits(after) ? ClockTime::ofText(after) : clockTime(after);
    }
    if (text.size() > 5 && text[5] == QLatin1Char('.')) {
        const auto match = daysWithFraction().match(text);
        return match.hasMatch() ? timeOfDayFraction(QLatin1Char('0') + match.captured(2)) : std::nullopt;
    }
    return std::nullopt;
}

std::optional<Code> code(const QString &cell)
{
    const QString text = cleaned(cell);
    if (text.size() == 6 && isAllDigits(text)) {
        return Code{text, QString()};
    }
    static const QRegularExpression form(
        QStringLiteral("^(?:([A-Za-z]{1,8})[.:]?)?(\\d{1,6})(?:[.]([A-Za-z]{1,8}))?$"));
    const auto match = form.match(text);
    const bool isTwice = match.hasMatch() && !match.captured(1).isEmpty() && !match.captured(3).isEmpty();
    if (!match.hasMatch() || isTwice) {
        return std::nullopt;
    }
    return Code{match.captured(2), (match.captured(1) + match.captured(3)).toUpper()};
}

std::optional<QString> serialNumber(const QString &cell)
{
    const QString text = cleaned(cell);
    const int exponent = text.indexOf(QLatin1Char('E'), 0, Qt::CaseInsensitive);
    if (exponent < 0) {
        return text;
    }
    static const QRegularExpression form(QStringLiteral("^(\\d)(?:\\.(\\d+))?E\\+?(\\d{1,2})$"),
                                         QRegularExpression::CaseInsensitiveOption);
    const auto match = form.match(text);
    if (!match.hasMatch()) {
        return text;
    }
    const QString decimals = match.captured(2);
    return decimals.size() == match.captured(3).toInt() ? std::optional(match.captured(1) + decimals)
                                                        : std::nullopt;
}

} // namespace TradeModule::CellValue
