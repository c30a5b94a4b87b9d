#include "tradechartobject/common/FlatValue.h"

#include "tradechartobject/common/ExactDecimal.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>

#include <cstdint>
#include <cstring>

namespace TradeChart {

namespace {

/// Escapes are rare: Qt reads them.
QString unescaped(std::string_view json)
{
    const QByteArray array = '[' + QByteArray::fromRawData(json.data(), static_cast<int>(json.size())) + ']';
    return QJsonDocument::fromJson(array).array().at(0).toString();
}

} // namespace

FieldText FlatValue::text() const
{
    if (!isString()) {
        return FieldText(QString());
    }
    const char *const begin = m_json.data() + 1;
    const char *const quote = m_json.data() + m_json.size() - 1;
    const int length = static_cast<int>(quote - begin);
    if (JsonScan::passPlain(begin, quote) == quote) {
        return FieldText(QLatin1String(begin, length));
    }
    const bool hasEscapes = std::memchr(begin, '\\', static_cast<std::size_t>(length)) != nullptr;
    return FieldText(hasEscapes ? unescaped(m_json) : QString::fromUtf8(begin, length));
}

double FlatValue::toDouble() const
{
    const bool isNegative = !m_json.empty() && m_json.front() == '-';
    std::int64_t digits = 0;
    int decimals = -1; // before a point
    for (const char byte : m_json.substr(isNegative ? 1 : 0)) {
        if (byte == '.') {
            decimals = 0;
        } else if (byte >= '0' && byte <= '9') {
            digits = digits * 10 + (byte - '0');
            decimals += decimals < 0 ? 0 : 1;
        } else {
            return 0.0; // no number
        }
    }
    // A whole number first: zero has no sign.
    return exactDecimal(static_cast<double>(isNegative ? -digits : digits), decimals < 0 ? 0 : decimals);
}

} // namespace TradeChart
