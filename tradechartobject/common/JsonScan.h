// Walks over a JSON text without building anything. Each function returns the place after what it has passed,
// or null where it is not beyond doubt that QJsonDocument reads the same there: a number of more digits than
// a double holds, a control character, a byte order mark. The text needs no end mark.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace TradeChart::JsonScan {

constexpr bool isSpace(char byte)
{
    return byte == ' ' || byte == '\n' || byte == '\r' || byte == '\t';
}

/// The next place that holds no white space.
inline const char *passSpace(const char *from, const char *end)
{
    while (from < end && isSpace(*from)) {
        ++from;
    }
    return from;
}

/// The next place that holds no white space, after a mark such as a colon.
inline const char *passMark(const char *from, const char *end, char mark)
{
    from = passSpace(from, end);
    return from < end && *from == mark ? passSpace(from + 1, end) : nullptr;
}

/// True when the text from there on begins with `what`. Mostly this is asked of a dozen bytes: a call of
/// memcmp() takes as long as the comparison.
inline bool beginsWith(const char *from, const char *end, std::string_view what)
{
    constexpr std::size_t word = sizeof(std::uint64_t);
    const auto isWordSame = [&](std::size_t at) {
        return std::memcmp(from + at, what.data() + at, word) == 0;
    };
    const std::size_t size = what.size();
    if (static_cast<std::size_t>(end - from) < size) {
        return false;
    }
    if (size < word) {
        std::size_t at = 0;
        while (at < size && from[at] == what[at]) {
            ++at;
        }
        return at == size;
    }
    for (std::size_t at = 0; at + word <= size; at += word) {
        if (!isWordSame(at)) {
            return false;
        }
    }
    return isWordSame(size - word);
}

/// A key between its quotes: plain ASCII.
const char *passKey(const char *from, const char *end);

/// A text between its quotes, a number, true, false or null.
const char *passValue(const char *from, const char *end);

/// The next byte of a text that is not plain ASCII: its closing quote, a backslash, a control character or
/// the beginning of another character.
const char *passPlain(const char *from, const char *end);

} // namespace TradeChart::JsonScan
