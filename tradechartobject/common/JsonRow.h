#pragma once

#include <QCborMap>
#include <QCborValue>
#include <QJsonArray>
#include <QJsonObject>
#include <QLatin1String>

#include <utility>

namespace TradeChart {

/// Where a column's value was in the row before, for JsonRow::read().
struct JsonPlace
{
    explicit JsonPlace(const char *name) : key(QLatin1String(name)) {}

    QCborValue key;
    int index = 0;    ///< of the key in the last row that had it
    QCborValue value; ///< undefined when the row had none
};

/// A row out of Qt's tree: the way of every message that FlatMessage leaves to Qt.
class JsonRow
{
public:
    using Place = JsonPlace;

    /// A copy as CBOR shares the row's memory and compares texts without copying them.
    explicit JsonRow(const QJsonObject &row) : m_row(row), m_fields(QCborMap::fromJsonObject(row)) {}

    /// Has `place` hold the row's value under its key; false when that is what it held already.
    bool read(JsonPlace &place) const
    {
        QCborValue value = valueOf(place);
        if (value == place.value) {
            return false;
        }
        place.value = std::move(value);
        return true;
    }

    QJsonObject toObject() const { return m_row; }

private:
    QCborValue valueOf(JsonPlace &place) const
    {
        if (place.index < m_fields.size() && (m_fields.begin() + place.index).key() == place.key) {
            return (m_fields.begin() + place.index).value();
        }
        const auto field = m_fields.find(place.key);
        if (field == m_fields.end()) {
            return {};
        }
        place.index = static_cast<int>(field - m_fields.begin());
        return field.value();
    }

    QJsonObject m_row;
    QCborMap m_fields;
};

/// The rows of an array; what is no object in it is a row without fields.
class JsonRows
{
public:
    explicit JsonRows(QJsonArray rows) : m_rows(std::move(rows)) {}

    int size() const { return m_rows.size(); }
    JsonRow at(int row) const { return JsonRow(m_rows.at(row).toObject()); }

private:
    QJsonArray m_rows;
};

} // namespace TradeChart
