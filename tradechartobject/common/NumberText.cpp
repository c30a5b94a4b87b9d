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

template <class Text>
std::optional<PlainNumber> readPlain(const Text &text)
{
    PlainNumber number{0, 0, 0};
    int point = -1;
    for (int i = 0; i < text.size(); ++i) {
        const int digit = text.at(i).unicode() - '0';
        if (digit >= 0 && digit <= 9 && number.count < mostExactDigits) {
            number.digits = number.digits * 10 + digit;
            ++number.count;
        } else if (text.at(i) == QLatin1Char('.') && point < 0 && i > 0 && i + 1 < text.size()) {
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

std::optional<PlainNumber> plainNumber(const FieldText &text)
{
    return text.with([](const auto &held) { return readPlain(held); });
}

} // namespace

int toInt(const FieldText &text)
{
    const auto plain = plainNumber(text);
    return plain && plain->decimals == 0 && plain->count <= mostIntDigits ? static_cast<int>(plain->digits)
                                                                          : text.toString().toInt();
}

double toDouble(const FieldText &text)
{
    const auto plain = plainNumber(text);
    return plain ? exactDecimal(static_cast<double>(plain->digits), plain->decimals)
                 : text.toString().toDouble();
}

} // namespace TradeChart
