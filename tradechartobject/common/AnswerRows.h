#pragma once

#include "tradechartobject/common/FlatMessage.h"
#include "tradechartobject/common/JsonRow.h"
#include "tradechartobject/common/RowReader.h"

#include <QJsonArray>

#include <cstddef>
#include <utility>
#include <variant>

namespace TradeChart {

/// The rows of an answer, from either way in which it was read.
class AnswerRows
{
public:
    explicit AnswerRows(QJsonArray rows) : m_rows(JsonRows(std::move(rows))) {}
    explicit AnswerRows(FlatRows rows) : m_rows(std::move(rows)) {}

    int size() const
    {
        return std::visit([](const auto &rows) { return rows.size(); }, m_rows);
    }

    bool isEmpty() const { return size() == 0; }

    /// Calls use(record, row) for each row in turn: what its columns tell, and the row itself, whose
    /// toObject() is its JSON.
    template <class Record, std::size_t columnCount, class Use>
    void read(const RowColumn<Record> (&columns)[columnCount], Use use) const
    {
        std::visit(
            [&](const auto &rows) {
                RowReader<decltype(rows.at(0)), Record, columnCount> reader(columns);
                const int count = rows.size();
                for (int i = 0; i < count; ++i) {
                    const auto row = rows.at(i);
                    use(reader.read(row), row);
                }
            },
            m_rows);
    }

private:
    std::variant<JsonRows, FlatRows> m_rows;
};

} // namespace TradeChart
