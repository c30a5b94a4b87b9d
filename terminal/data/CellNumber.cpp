#include "terminal/data/CellNumber.h"

#include <QByteArray>
#include <QList>

#include <cmath>
#include <cstdint>
#include <string>

namespace Terminal {

namespace {

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

/// Exact, like every number of so few digits; nothing for longer ones and for other forms.
std::optional<double> shortNumber(std::string_view cell)
{
    constexpr std::size_t mostDigits = 15;
    static constexpr double powers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                        1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const bool isNegative = !cell.empty() && cell.front() == '-';
    cell.remove_prefix(isNegative ? 1 : 0);
    if (cell.empty() || cell.size() > mostDigits || !isDigit(cell.front()) || !isDigit(cell.back())) {
        return std::nullopt;
    }
    std::int64_t digits = 0;
    std::size_t pointAt = cell.size() - 1;
    for (std::size_t i = 0; i < cell.size(); ++i) {
        if (isDigit(cell[i])) {
            digits = digits * 10 + (cell[i] - '0');
        } else if (cell[i] == '.' && pointAt == cell.size() - 1) {
            pointAt = i;
        } else {
            return std::nullopt;
        }
    }
    const double value = static_cast<double>(digits) / powers[cell.size() - 1 - pointAt];
    return isNegative ? -value : value;
}

/// True for "1.05E+08": the digits after its third are lost.
bool isCut(const QByteArray &cell)
{
    const int exponentAt = cell.toLower().indexOf('e');
    const int pointAt = cell.indexOf('.');
    const int decimals = pointAt < 0 ? 0 : exponentAt - pointAt - 1;
    return exponentAt >= 0 && cell.mid(exponentAt + 1).toInt() > decimals;
}

/// True for digits in groups of three, as many as there are before a decimal point.
bool isGrouped(const QByteArray &cell)
{
    const int pointAt = cell.indexOf('.');
    if (pointAt >= 0 && cell.indexOf(',', pointAt) >= 0) {
        return false;
    }
    const QList<QByteArray> groups = (pointAt < 0 ? cell : cell.left(pointAt)).split(',');
    for (int i = 1; i < groups.size(); ++i) {
        if (groups[i].size() != 3) {
            return false;
        }
    }
    return !groups.first().isEmpty() && groups.first().size() <= 3;
}

} // namespace

std::optional<double> numberOf(std::string_view cell)
{
    if (const auto number = shortNumber(cell)) {
        return number;
    }
    const bool hasGroups = cell.find(',') != std::string_view::npos;
    if (hasGroups && cell.find('.') != std::string_view::npos) {
        return countOf(cell);
    }
    const auto text = QByteArray::fromRawData(cell.data(), static_cast<int>(cell.size()));
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber && std::isfinite(number) && !isCut(text) ? std::optional(number) : std::nullopt;
}

std::optional<double> countOf(std::string_view cell)
{
    if (cell.find(',') == std::string_view::npos) {
        return numberOf(cell);
    }
    QByteArray text(cell.data(), static_cast<int>(cell.size()));
    if (!isGrouped(text)) {
        return std::nullopt;
    }
    text.replace(',', "");
    return numberOf({text.constData(), static_cast<std::size_t>(text.size())});
}

} // namespace Terminal
