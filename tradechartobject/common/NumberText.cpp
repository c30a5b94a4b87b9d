#include "tradechartobject/common/NumberText.h"

#include <cstdint>
#include <optional>

namespace TradeChart {

namespace {

/// Digits with at most one point between two of them.
struct PlainNumber
{
    std::int64_t digits;
    int count;    ///< of digits
    int decimals; ///< of digits behind the point
};

constexpr int mostIntDigits = 9;     // fit an int whatever they are
constexpr int mostDoubleDigits = 15; // are exact in a double, as are the powers of ten up to here

constexpr double powersOfTen[mostDoubleDigits + 1] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                      1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

std::optional<PlainNumber> readPlain(const QString &text)
{
    PlainNumber number{0, 0, 0};
    int point = -1;
    for (int i = 0; i < text.size(); ++i) {
        const int digit = text[i].unicode() - '0';
        if (digit >= 0 && digit <= 9 && number.count < mostDoubleDigits) {
            number.digits = number.digits * 10 + digit;
            ++number.count;
        } else if (text[i] == QLatin1Char('.') && point < 0 && i > 0 && i + 1 < text.size()) {
            point = i;
        } else {
            return std::nullopt;
        }
    }
    if (number.count == 0) {
        return std::nullopt;
    }
    number.decimals = point < 0 ? 0 : text.size() - point - 1;
    return number;
}

} // namespace

int toInt(const QString &text)
{
    const auto plain = readPlain(text);
    return plain && plain->decimals == 0 && plain->count <= mostIntDigits ? static_cast<int>(plain->digits)
                                                                          : text.toInt();
}

double toDouble(const QString &text)
{
    // The quotient of two exact doubles is the double nearest to the decimal number.
    const auto plain = readPlain(text);
    return plain ? static_cast<double>(plain->digits) / powersOfTen[plain->decimals] : text.toDouble();
}

} // namespace TradeChart
