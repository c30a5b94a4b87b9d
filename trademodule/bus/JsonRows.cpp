#include "trademodule/bus/JsonRows.h"

#include <algorithm>

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

} // namespace

JsonRows::JsonRows(int expectedRows)
{
    constexpr size_t usualSize = 300;
    m_json.reserve(static_cast<size_t>(expectedRows) * usualSize);
    m_json += '[';
}

void JsonRows::begin()
{
    endRow();
    m_json += m_json.size() == 1 ? "{" : ",{";
}

/// The comma after the last value becomes the end of its row.
void JsonRows::endRow()
{
    if (m_json.back() == ',') {
        m_json.back() = '}';
    }
}

void JsonRows::addText(const char *key, const QString &text)
{
    addPlainText(key, escaped(text.toUtf8()).toStdString());
}

void JsonRows::addPlainText(const char *key, std::string_view text)
{
    addKey(key);
    m_json += '"';
    m_json += text;
    m_json += "\",";
}

void JsonRows::addNumber(const char *key, std::string_view number)
{
    addKey(key);
    m_json += number;
    m_json += ',';
}

void JsonRows::addFlag(const char *key, bool flag)
{
    addNumber(key, flag ? "true" : "false");
}

void JsonRows::addKey(const char *key)
{
    m_json += '"';
    m_json += key;
    m_json += "\":";
}

QByteArray JsonRows::toJson()
{
    endRow();
    m_json += ']';
    return QByteArray::fromStdString(m_json);
}

} // namespace TradeModule
