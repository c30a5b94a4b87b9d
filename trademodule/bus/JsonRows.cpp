#include "trademodule/bus/JsonRows.h"

#include <algorithm>
#include <utility>

namespace TradeModule {

namespace {

/// JSON wants these written otherwise: quotes, backslashes and what is below the blank.
bool mustBeEscaped(char byte)
{
    return byte == '"' || byte == '\\' || static_cast<unsigned char>(byte) < ' ';
}

QByteArray escaped(const QByteArray &utf8)
{
    if (std::none_of(utf8.begin(), utf8.end(), mustBeEscaped)) {
        return utf8;
    }
    QByteArray json;
    for (const char byte : utf8) {
        json += mustBeEscaped(byte) ? "\\u" + QByteArray::number(byte, 16).rightJustified(4, '0')
                                    : QByteArray(1, byte);
    }
    return json;
}

/// So that it is the same in UTF-8 and in JSON.
bool isPlain(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) {
        return c.unicode() < 0x80 && !mustBeEscaped(static_cast<char>(c.unicode()));
    });
}

char *copied(std::string_view text, char *to)
{
    return std::copy(text.begin(), text.end(), to);
}

} // namespace

JsonRows::JsonRows(int expectedRows)
{
    constexpr int usualSize = 300;
    m_json.resize((expectedRows + 1) * usualSize);
    append("[");
}

/// Where the next bytes go: asked once for a value, which is much quicker than byte by byte.
char *JsonRows::room(std::size_t bytes)
{
    const int before = m_size;
    m_size += static_cast<int>(bytes);
    if (m_size > m_json.size()) {
        m_json.resize(std::max(m_size, 2 * m_json.size()));
    }
    return m_json.data() + before;
}

void JsonRows::append(std::string_view text)
{
    copied(text, room(text.size()));
}

void JsonRows::begin()
{
    endRow();
    append(m_size == 1 ? "{" : ",{");
}

/// The comma after the last value becomes the end of its row.
void JsonRows::endRow()
{
    if (m_json.at(m_size - 1) == ',') {
        m_json.data()[m_size - 1] = '}';
    }
}

void JsonRows::addText(const char *key, const QString &text)
{
    if (!isPlain(text)) {
        const QByteArray json = escaped(text.toUtf8());
        addPlainText(key, {json.constData(), static_cast<std::size_t>(json.size())});
        return;
    }
    char *to = addKey(key, static_cast<std::size_t>(text.size()) + 3);
    *to++ = '"';
    to = std::transform(text.begin(), text.end(), to, [](QChar c) { return c.toLatin1(); });
    copied("\",", to);
}

void JsonRows::addPlainText(const char *key, std::string_view text)
{
    char *to = addKey(key, text.size() + 3);
    *to++ = '"';
    copied("\",", copied(text, to));
}

void JsonRows::addNumber(const char *key, std::string_view number)
{
    *copied(number, addKey(key, number.size() + 1)) = ',';
}

void JsonRows::addFlag(const char *key, bool flag)
{
    addNumber(key, flag ? "true" : "false");
}

/// Where the value goes, for which there is room then.
char *JsonRows::addKey(const char *key, std::size_t bytesAfter)
{
    const std::string_view name(key);
    char *to = room(name.size() + 3 + bytesAfter);
    *to++ = '"';
    return copied("\":", copied(name, to));
}

QByteArray JsonRows::toJson()
{
    endRow();
    append("]");
    m_json.resize(m_size);
    return std::move(m_json);
}

} // namespace TradeModule
