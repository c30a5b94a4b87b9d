// Reads the rows of an answer.
#pragma once

#include <QCborMap>
#include <QCborValue>
#include <QJsonObject>
#include <QLatin1String>
#include <QString>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <utility>

namespace TradeChart {

/// What a record takes from the text under a key. `take` is called when the text differs from the one in the
/// row before: what it sets must follow from the text alone.
template <class Record>
struct RowColumn
{
    const char *key;
    void (*take)(Record &record, const QString &text);
};

/// One for all rows of an answer. They are alike: a key is first looked for where the row before had it,
/// and a text that the row before had, too, is not taken again. To search every row for every key takes as
/// long as to parse the answer.
template <class Record, std::size_t columnCount>
class RowReader
{
public:
    explicit RowReader(const RowColumn<Record> (&columns)[columnCount]) : m_record()
    {
        std::array<RowColumn<Record>, columnCount> sorted;
        std::copy(std::begin(columns), std::end(columns), sorted.begin());
        // A row holds its keys in this order: it is read along its memory, front to back.
        std::sort(sorted.begin(), sorted.end(),
                  [](const auto &one, const auto &other) { return std::strcmp(one.key, other.key) < 0; });
        std::transform(sorted.begin(), sorted.end(), m_places.begin(), [](const auto &column) {
            return Place{QLatin1String(column.key), column.take, 0, QCborValue()};
        });
        for (const Place &place : m_places) {
            place.take(m_record, QString());
        }
    }

    /// What the record has taken from a row, until the next is read. From a key that the row does not have,
    /// or has something else than text under, it takes an empty text.
    const Record &read(const QJsonObject &row)
    {
        const QCborMap fields = QCborMap::fromJsonObject(row); // shared; compares texts without copying them
        for (Place &place : m_places) {
            QCborValue value = find(place, fields);
            if (value != place.value) {
                place.take(m_record, value.toString());
                place.value = std::move(value);
            }
        }
        return m_record;
    }

private:
    struct Place
    {
        QCborValue key;
        void (*take)(Record &record, const QString &text);
        int index;        ///< of the key in the last row that had it
        QCborValue value; ///< in the last row; undefined when it had none
    };

    static QCborValue find(Place &place, const QCborMap &fields)
    {
        if (place.index < fields.size() && (fields.begin() + place.index).key() == place.key) {
            return (fields.begin() + place.index).value();
        }
        const auto field = fields.find(place.key);
        if (field == fields.end()) {
            return {};
        }
        place.index = static_cast<int>(field - fields.begin());
        return field.value();
    }

    std::array<Place, columnCount> m_places;
    Record m_record;
};

} // namespace TradeChart
