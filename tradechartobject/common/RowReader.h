// Reads the rows of an answer.
#pragma once

#include "tradechartobject/common/FieldText.h"
#include "tradechartobject/common/FlatValue.h"

#include <QCborValue>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <utility>
#include <variant>

namespace TradeChart {

/// What stands under a key of a row, lent. Of another type than asked for, it is empty, false or 0.
class RowField
{
public:
    explicit RowField(const QCborValue &value) : m_value(&value) {}
    explicit RowField(const FlatValue &value) : m_value(&value) {}

    FieldText text() const
    {
        const auto *const flat = std::get_if<const FlatValue *>(&m_value);
        return flat != nullptr ? (*flat)->text()
                               : FieldText(std::get<const QCborValue *>(m_value)->toString());
    }

    bool isTrue() const
    {
        return std::visit([](const auto *value) { return value->toBool(); }, m_value);
    }

    double number() const
    {
        return std::visit([](const auto *value) { return value->toDouble(); }, m_value);
    }

private:
    std::variant<const QCborValue *, const FlatValue *> m_value;
};

/// What a record takes from the value under a key. `take` is called when the value differs from the one in
/// the row before: what it sets must follow from the value alone.
template <class Record>
struct RowColumn
{
    const char *key;
    void (*take)(Record &record, const RowField &field);
};

/// One for all rows of an answer, JsonRow or FlatRow. They are alike: a key is first looked for where the row
/// before had it, and a value that the row before had, too, is not taken again. To search every row for every
/// key takes as long as to parse the answer.
template <class Row, class Record, std::size_t columnCount>
class RowReader
{
public:
    explicit RowReader(const RowColumn<Record> (&columns)[columnCount])
        : RowReader(sorted(columns), std::make_index_sequence<columnCount>())
    {
        for (const Column &column : m_columns) {
            column.take(m_record, RowField(column.place.value));
        }
    }

    /// What the record has taken from a row, until the next is read. From a key that the row does not have,
    /// or has something of another type under, it takes an empty text, false or 0.
    const Record &read(const Row &row)
    {
        for (Column &column : m_columns) {
            if (row.read(column.place)) {
                column.take(m_record, RowField(column.place.value));
            }
        }
        return m_record;
    }

private:
    using Columns = std::array<RowColumn<Record>, columnCount>;

    struct Column
    {
        typename Row::Place place;
        void (*take)(Record &record, const RowField &field);
    };

    template <std::size_t... index>
    RowReader(const Columns &columns, std::index_sequence<index...>)
        : m_columns{Column{typename Row::Place(columns[index].key), columns[index].take}...},
          m_record()
    {
    }

    /// A row mostly holds its keys in this order: it is read along its memory, front to back.
    static Columns sorted(const RowColumn<Record> (&columns)[columnCount])
    {
        Columns inOrder;
        std::copy(std::begin(columns), std::end(columns), inOrder.begin());
        std::sort(inOrder.begin(), inOrder.end(),
                  [](const auto &one, const auto &other) { return std::strcmp(one.key, other.key) < 0; });
        return inOrder;
    }

    std::array<Column, columnCount> m_columns;
    Record m_record;
};

} // namespace TradeChart
