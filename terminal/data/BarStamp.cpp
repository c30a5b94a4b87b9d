#include "terminal/data/BarStamp.h"

#include "trading/ClockTime.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace Terminal {

namespace {

constexpr int firstYear = 1900;
constexpr int lastYear = 2099;
constexpr int hoursFromGreenwich = 8;
constexpr std::size_t longestCell = 40;

struct Form
{
    std::string_view shape;
    const char *shown;
    bool hasDate;
    bool hasTime;
};

/// Shapes have a 9 for each number, see shapeOf(); numbers without anything between them, one for each digit.
constexpr Form forms[] = {
    {"99999999", "yyyymmdd", true, false},
    {"9-9-9", "yyyy-mm-dd", true, false},
    {"9/9/9", "yyyy/mm/dd", true, false},
    {"9.9.9", "yyyy.mm.dd", true, false},
    {"9年9月9日", "yyyy年mm月dd日", true, false},
    {"9999", "hhmm", false, true},
    {"999999", "hhmmss", false, true},
    {"9:9", "hh:mm", false, true},
    {"9:9:9", "hh:mm:ss", false, true},
    {"9:9:9.9", "hh:mm:ss", false, true},
    {"999999999999", "yyyymmddhhmm", true, true},
    {"99999999999999", "yyyymmddhhmmss", true, true},
    {"99999999999999999", "yyyymmddhhmmss000", true, true},
    {"99999999 9", "yyyymmdd hhmm", true, true},
    {"99999999 9:9", "yyyymmdd hh:mm", true, true},
    {"99999999 9:9:9", "yyyymmdd hh:mm:ss", true, true},
    {"9-9-9 9:9", "yyyy-mm-dd hh:mm", true, true},
    {"9-9-9 9:9:9", "yyyy-mm-dd hh:mm:ss", true, true},
    {"9-9-9 9:9:9.9", "yyyy-mm-dd hh:mm:ss", true, true},
    {"9-9-9 9:9:9+9:9", "yyyy-mm-dd hh:mm:ss+08:00", true, true},
    {"9/9/9 9:9", "yyyy/mm/dd hh:mm", true, true},
    {"9/9/9 9:9:9", "yyyy/mm/dd hh:mm:ss", true, true},
    {"9.9.9 9:9", "yyyy.mm.dd hh:mm", true, true},
    {"9.9.9 9:9:9", "yyyy.mm.dd hh:mm:ss", true, true},
};

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

/// Some write the day of the week after a comma: 2024-01-31,三.
std::string_view withoutWeekday(std::string_view cell)
{
    return cell.substr(0, cell.find(','));
}

/// The numbers of a cell in order, with their digits.
using Runs = std::vector<std::string_view>;

constexpr std::size_t digitsOfDate = 8;

Runs runsOf(std::string_view cell)
{
    Runs runs;
    for (std::size_t i = 0; i < cell.size(); ++i) {
        const std::size_t begin = i;
        while (i < cell.size() && isDigit(cell[i])) {
            ++i;
        }
        if (i > begin) {
            runs.push_back(cell.substr(begin, i - begin));
        }
    }
    return runs;
}

/// How many nines a run has in its shape. A leading zero of a time may be missing where it is a number.
std::size_t ninesFor(std::size_t digits, std::size_t cellSize)
{
    if (digits >= digitsOfDate) {
        return digits;
    }
    const bool lacksZero = digits == 3 || digits == 5;
    return digits < cellSize ? 1 : digits + (lacksZero ? 1 : 0);
}

/// The cell with nines for its digits: as many as there are in a number that nothing divides, one for parts
/// of a day or time. A T between day and time is a blank.
std::string shapeOf(std::string_view cell)
{
    std::string shape;
    for (std::size_t i = 0; i < cell.size();) {
        std::size_t end = i;
        while (end < cell.size() && isDigit(cell[end])) {
            ++end;
        }
        if (end > i) {
            shape.append(ninesFor(end - i, cell.size()), '9');
        } else {
            shape.push_back(cell[end++] == 'T' ? ' ' : cell[i]);
        }
        i = end;
    }
    return shape;
}

const Form *formOf(std::string_view shape)
{
    const auto *const form = std::find_if(std::begin(forms), std::end(forms),
                                          [shape](const Form &row) { return row.shape == shape; });
    return form == std::end(forms) ? nullptr : form;
}

int number(std::string_view digits)
{
    int value = 0;
    for (const char digit : digits.substr(0, 9)) {
        value = value * 10 + (digit - '0');
    }
    return value;
}

std::optional<Trading::TradingDate> dateOf(int year, int month, int day)
{
    return year >= firstYear && year <= lastYear ? Trading::TradingDate::of(year, month, day) : std::nullopt;
}

/// Takes the day away from the numbers of a cell.
std::optional<Trading::TradingDate> takeDate(Runs *runs)
{
    if (runs->front().size() < digitsOfDate) {
        const auto date = dateOf(number(runs->at(0)), number(runs->at(1)), number(runs->at(2)));
        runs->erase(runs->begin(), runs->begin() + 3);
        return date;
    }
    const std::string_view digits = runs->front();
    runs->front().remove_prefix(digitsOfDate);
    if (runs->front().empty()) {
        runs->erase(runs->begin());
    }
    return dateOf(number(digits.substr(0, 4)), number(digits.substr(4, 2)), number(digits.substr(6, 2)));
}

/// hhmm, hhmmss or hhmmss000, without the first digit if that is a zero.
std::optional<int> minuteOfDigits(std::string_view digits)
{
    constexpr std::size_t fewestDigits = 3;
    if (digits.size() < fewestDigits) {
        return std::nullopt; // an hour alone, in a cell with a day before it
    }
    const std::size_t hourDigits = digits.size() % 2 == 0 ? 2 : 1;
    digits = digits.substr(0, hourDigits + 4);
    const auto time =
        Trading::ClockTime::of(number(digits.substr(0, hourDigits)), number(digits.substr(hourDigits, 2)),
                               number(digits.substr(hourDigits + 2)));
    return time ? std::optional(time->minute()) : std::nullopt;
}

std::optional<int> minuteOfRuns(const Runs &runs)
{
    if (runs.size() == 1) {
        constexpr std::size_t digitsWithThousandths = 9;
        return minuteOfDigits(runs[0].size() == digitsWithThousandths ? runs[0].substr(0, 6) : runs[0]);
    }
    const auto time =
        Trading::ClockTime::of(number(runs[0]), number(runs[1]), runs.size() > 2 ? number(runs[2]) : 0);
    return time ? std::optional(time->minute()) : std::nullopt;
}

/// False for a time that was told by another clock than the exchange's.
bool isExchangeTime(std::string_view shape, const Runs &runs)
{
    return shape.find('+') == std::string_view::npos ||
           (number(runs[runs.size() - 2]) == hoursFromGreenwich && number(runs.back()) == 0);
}

} // namespace

std::optional<BarStampForm> BarStampForm::of(std::string_view cell)
{
    cell = withoutWeekday(cell);
    BarStampForm form;
    form.m_shape = cell.size() <= longestCell ? shapeOf(cell) : std::string();
    const Form *const row = formOf(form.m_shape);
    if (row == nullptr) {
        return std::nullopt;
    }
    form.m_hasDate = row->hasDate;
    form.m_hasTime = row->hasTime;
    return form.read(cell) ? std::optional(form) : std::nullopt;
}

std::optional<BarStamp> BarStampForm::read(std::string_view cell) const
{
    cell = withoutWeekday(cell);
    if (cell.size() > longestCell || shapeOf(cell) != m_shape) {
        return std::nullopt;
    }
    Runs runs = runsOf(cell);
    if (!isExchangeTime(m_shape, runs)) {
        return std::nullopt;
    }
    BarStamp stamp;
    stamp.date = m_hasDate ? takeDate(&runs) : std::nullopt;
    stamp.minute = m_hasTime ? minuteOfRuns(runs) : std::nullopt;
    const bool isWhole = stamp.date.has_value() == m_hasDate && stamp.minute.has_value() == m_hasTime;
    return isWhole ? std::optional(stamp) : std::nullopt;
}

QString BarStampForm::shown() const
{
    return QString::fromUtf8(formOf(m_shape)->shown);
}

} // namespace Terminal
