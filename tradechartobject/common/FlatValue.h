#pragma once

#include "tradechartobject/common/FieldText.h"
#include "tradechartobject/common/JsonScan.h"

#include <QString>

#include <string_view>

namespace TradeChart {

/// A plain value of a FlatMessage, lent from it: a text, a number, a truth, null, or nothing at all. Reads as
/// the QJsonValue of the same JSON: what is asked for as another type is empty, false or 0.
class FlatValue
{
public:
    FlatValue() = default;

    /// `json` is what JsonScan::passValue() has passed.
    explicit FlatValue(std::string_view json) : m_json(json) {}

    bool isString() const { return !m_json.empty() && m_json.front() == '"'; }
    bool isUndefined() const { return m_json.empty(); }

    QString toString() const { return text().toString(); }
    bool toBool() const { return m_json == "true"; }
    double toDouble() const;

    /// The text, without a copy of plain ASCII.
    FieldText text() const;

    /// True when `json` begins with this very text. A closing quote ends it, so nothing has to be read.
    bool isTextAt(const char *json, const char *end) const
    {
        return isString() && JsonScan::beginsWith(json, end, m_json);
    }

    /// Of its JSON.
    std::size_t size() const { return m_json.size(); }

    friend bool operator==(FlatValue one, FlatValue other) { return one.m_json == other.m_json; }

private:
    std::string_view m_json;
};

} // namespace TradeChart
