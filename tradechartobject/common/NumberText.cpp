#include "tradechartobject/common/NumberText.h"

#include "tradechartobject/common/ExactDecimal.h"

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

constexpr int mostIntDigits = 9; // fit an int whatever they are

std::optional<PlainNumber> readPlain(const QString &text)
{
    PlainNumber number{0, 0, 0};
    int point = -1;
    for (int i = 0; i < text.size(); ++i) {
        const int digit = text[i].unicode() - '0';
        if (digit >= 0 && digit <= 9 && number.count < mostExactDigits) {
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
    const auto plain = readPlain(text);
    return plain ? exactDecimal(static_cast<double>(plain->digits), plain->decimals) : text.toDouble();
}

} // namespace TradeChart
