#include "terminal/data/PerShare.h"

#include <algorithm>

namespace Terminal {

namespace {

constexpr std::size_t mostDecimals = 8;
constexpr std::size_t mostWholeDigits = 6;

bool areDigits(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

qint64 numberOfDigits(std::string_view digits)
{
    qint64 number = 0;
    for (const char digit : digits) {
        number = number * 10 + (digit - '0');
    }
    return number;
}

} // namespace

std::optional<qint64> decimalSteps(std::string_view text)
{
    const bool isNegative = !text.empty() && text.front() == '-';
    text.remove_prefix(isNegative ? 1 : 0);
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::string_view whole = text.substr(0, point);
    const std::string_view decimals = text.substr(std::min(point + 1, text.size()));
    const bool fits = !whole.empty() && whole.size() <= mostWholeDigits && decimals.size() <= mostDecimals;
    const bool endsInPoint = point + 1 == text.size();
    if (!fits || endsInPoint || !areDigits(whole) || !areDigits(decimals)) {
        return std::nullopt;
    }
    qint64 steps = numberOfDigits(whole);
    for (std::size_t i = 0; i < mostDecimals; ++i) {
        steps = steps * 10 + (i < decimals.size() ? decimals[i] - '0' : 0);
    }
    return isNegative ? -steps : steps;
}

} // namespace Terminal
