#include "tradechartobject/common/JsonScan.h"

#include "tradechartobject/common/ExactDecimal.h"

#include <QtAlgorithms>
#include <QtEndian>

#include <cstring>

namespace TradeChart::JsonScan {

namespace {

constexpr quint64 everyByte = 0x0101010101010101;
constexpr int wordBytes = static_cast<int>(sizeof(quint64));

constexpr quint64 inEveryByte(unsigned char byte)
{
    return everyByte * byte;
}

/// The high bit of the first byte that is a quote, a backslash, below a blank or beyond ASCII. Of the bytes
/// after that one it says nothing: subtractions borrow.
constexpr quint64 firstOddByte(quint64 word)
{
    const quint64 quotes = (word ^ inEveryByte('"')) - everyByte;
    const quint64 backslashes = (word ^ inEveryByte('\\')) - everyByte;
    const quint64 belowBlank = word - inEveryByte(' ');
    return (quotes | backslashes | belowBlank | word) & inEveryByte(0x80);
}

constexpr bool isPlain(unsigned char byte)
{
    return byte >= ' ' && byte < 0x80 && byte != '"' && byte != '\\';
}

constexpr bool isDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

constexpr bool isHexDigit(char byte)
{
    return isDigit(byte) || (byte >= 'a' && byte <= 'f') || (byte >= 'A' && byte <= 'F');
}

const char *passEscape(const char *from, const char *end)
{
    if (end - from < 2) {
        return nullptr;
    }
    if (from[1] != 'u') {
        return std::memchr("\"\\/bfnrt", from[1], 8) != nullptr ? from + 2 : nullptr;
    }
    constexpr int length = 6; // \uABCD
    if (end - from < length) {
        return nullptr;
    }
    for (int i = 2; i < length; ++i) {
        if (!isHexDigit(from[i])) {
            return nullptr;
        }
    }
    return from + length;
}

/// Length of a character in UTF-8 by its first byte; the second must lie in [leastSecond, mostSecond], all
/// others in [0x80, 0xBF].
struct Utf8Lead
{
    unsigned char first;
    unsigned char last;
    int length;
    unsigned char leastSecond;
    unsigned char mostSecond;
};

// No overlong forms, no surrogates, nothing beyond U+10FFFF.
constexpr Utf8Lead utf8Leads[] = {
    {0xE1, 0xEC, 3, 0x80, 0xBF}, // first: most Chinese characters
    {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF}, {0xED, 0xED, 3, 0x80, 0x9F},
    {0xEE, 0xEF, 3, 0x80, 0xBF}, {0xF0, 0xF0, 4, 0x90, 0xBF}, {0xF1, 0xF3, 4, 0x80, 0xBF},
    {0xF4, 0xF4, 4, 0x80, 0x8F},
};

bool isByteOrderMark(const char *from)
{
    return std::memcmp(from, "\xEF\xBB\xBF", 3) == 0;
}

const char *passCharacter(const char *from, const char *end)
{
    const auto byte = [from](int i) { return static_cast<unsigned char>(from[i]); };
    for (const Utf8Lead &lead : utf8Leads) {
        if (byte(0) < lead.first || byte(0) > lead.last) {
            continue;
        }
        if (end - from < lead.length || byte(1) < lead.leastSecond || byte(1) > lead.mostSecond) {
            return nullptr;
        }
        for (int i = 2; i < lead.length; ++i) {
            if ((byte(i) & 0xC0) != 0x80) {
                return nullptr;
            }
        }
        return lead.length == 3 && isByteOrderMark(from) ? nullptr : from + lead.length;
    }
    return nullptr;
}

const char *passText(const char *from, const char *end)
{
    ++from; // the quote
    while (from != nullptr) {
        from = passPlain(from, end);
        if (from == end) {
            return nullptr;
        }
        if (*from == '"') {
            return from + 1;
        }
        from = *from == '\\' ? passEscape(from, end) : passCharacter(from, end);
    }
    return nullptr;
}

const char *passDigits(const char *from, const char *end)
{
    while (from < end && isDigit(*from)) {
        ++from;
    }
    return from;
}

/// Without an exponent, and exact in a double.
const char *passNumber(const char *from, const char *end)
{
    const char *const digits = *from == '-' ? from + 1 : from;
    const char *const point = passDigits(digits, end);
    if (point == digits || (*digits == '0' && point - digits > 1)) {
        return nullptr;
    }
    if (point == end || *point != '.') {
        return point - digits <= mostExactDigits ? point : nullptr;
    }
    const char *const behind = passDigits(point + 1, end);
    return behind > point + 1 && behind - digits - 1 <= mostExactDigits ? behind : nullptr;
}

const char *passWord(const char *from, const char *end)
{
    for (const char *word : {"true", "false", "null"}) {
        const auto length = static_cast<std::ptrdiff_t>(std::strlen(word));
        if (end - from >= length && std::memcmp(from, word, static_cast<std::size_t>(length)) == 0) {
            return from + length;
        }
    }
    return nullptr;
}

} // namespace

const char *passKey(const char *from, const char *end)
{
    if (from >= end || *from != '"') {
        return nullptr;
    }
    from = passPlain(from + 1, end);
    return from < end && *from == '"' ? from + 1 : nullptr;
}

const char *passValue(const char *from, const char *end)
{
    if (from >= end) {
        return nullptr;
    }
    if (*from == '"') {
        return passText(from, end);
    }
    return *from == '-' || isDigit(*from) ? passNumber(from, end) : passWord(from, end);
}

const char *passPlain(const char *from, const char *end)
{
    for (; end - from >= wordBytes; from += wordBytes) {
        const quint64 odd = firstOddByte(qFromLittleEndian<quint64>(from));
        if (odd != 0) {
            return from + qCountTrailingZeroBits(odd) / 8;
        }
    }
    while (from < end && isPlain(static_cast<unsigned char>(*from))) {
        ++from;
    }
    return from;
}

} // namespace TradeChart::JsonScan
