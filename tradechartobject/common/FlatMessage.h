// A message read where it lies. Parsing 100,000 rows into a tree takes ten times as long as looking at every
// byte of them, and several times the memory.
#pragma once

#include "tradechartobject/common/FieldText.h"
#include "tradechartobject/common/FlatValue.h"

#include <QByteArray>
#include <QJsonObject>
#include <QLatin1String>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace TradeChart {

struct FlatIndex;

/// Where a column's value was in the row before, for FlatRow::read().
struct FlatPlace
{
    explicit FlatPlace(const char *name) : key(name) {}

    std::string key;
    int form = -1;         ///< of the row before, see FlatIndex
    std::size_t field = 0; ///< the key's place in rows of that form; their number when they do not have it
    FlatValue value;
};

/// A row of a FlatMessage, lent from it.
class FlatRow
{
public:
    using Place = FlatPlace;

    FlatRow(const FlatIndex &index, int row) : m_index(index), m_row(row) {}

    /// Has `place` hold the row's value under its key; false when that is the text which it held already.
    bool read(FlatPlace &place) const;

    /// The same row through Qt.
    QJsonObject toObject() const;

private:
    const char *valueOf(FlatPlace &place) const;
    std::size_t fieldCount() const;

    const FlatIndex &m_index;
    const int m_row;
};

/// The rows of a FlatMessage; they keep it.
class FlatRows
{
public:
    explicit FlatRows(std::shared_ptr<const FlatIndex> index) : m_index(std::move(index)) {}

    int size() const;
    FlatRow at(int row) const { return {*m_index, row}; }

private:
    std::shared_ptr<const FlatIndex> m_index;
};

/// A JSON object of plain values, of which one, "data", may be an array of such objects: what an answer with
/// a list is. Copies share what was read. Reads as the QJsonObject of the same text.
class FlatMessage
{
public:
    /// None for any other form, and wherever it is not beyond doubt that QJsonDocument reads the text the
    /// same: docs/decisions/reading-rows.md tells them. Keeps the text; beside it, about an eighth of its
    /// size while the message lives.
    static std::optional<FlatMessage> read(const QByteArray &text);

    /// What stands under a key; undefined for "data" with rows.
    FlatValue value(QLatin1String key) const;

    bool contains(QLatin1String key) const;

    FlatRows rows() const { return FlatRows(m_index); }

private:
    explicit FlatMessage(std::shared_ptr<const FlatIndex> index) : m_index(std::move(index)) {}

    std::shared_ptr<const FlatIndex> m_index;
};

} // namespace TradeChart
