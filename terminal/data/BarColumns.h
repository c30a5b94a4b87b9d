#pragma once

#include "terminal/data/TextCells.h"
#include "terminal/data/VolumeUnit.h"

#include <QString>
#include <QStringList>

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

namespace Terminal {

/// What a column of a bar file holds.
enum class BarColumn {
    Date,
    Time,
    Open,
    High,
    Low,
    Close,
    Volume,
    Amount,        ///< the money that changed hands
    PreviousClose, ///< of the bar before, adjusted for what the security paid out
    Adjustment,    ///< whether prices are adjusted
    IsTraded,      ///< 1 for a day with trading, 0 for a suspended one
    IsPaused,      ///< the other way round
    Code,
    Name
};

constexpr std::size_t barColumnCount = 14;

/// Where the columns of a bar file are, by the names in its header. Names may be English or Chinese, with or
/// without a unit in parentheses; what they are called is a table.
class BarColumns
{
public:
    /// Takes one line of the header; a header may have several, of which the later ones name what the first
    /// left open. Returns an empty text, or that two columns have the same name.
    QString take(const Cells &header);

    /// Names a column that has none.
    void name(std::size_t place, BarColumn column) { m_places[index(column)] = place; }

    bool has(BarColumn column) const { return m_places[index(column)].has_value(); }
    /// Requires has().
    std::size_t place(BarColumn column) const { return *m_places[index(column)]; }
    /// Every column that names the security.
    const std::vector<std::size_t> &codePlaces() const { return m_codePlaces; }

    std::size_t count() const { return m_names.size(); }
    /// As the file writes it.
    QString header(BarColumn column) const { return m_names.at(static_cast<int>(place(column))); }
    /// True for a column whose name says nothing, or that has none.
    bool isUnknown(std::size_t place) const;
    /// The names of the columns that nothing is known of.
    QStringList unknown() const;

    /// How many of open, high, low and close there are: a line with three is a header.
    int priceCount() const;
    /// The names of the columns that bars need and that are not there.
    QStringList missing() const;

    /// The unit that the header names for the volume: 成交量(手), "volume (shares)".
    std::optional<VolumeUnit> namedUnit() const { return m_namedUnit; }
    /// True for the header of the own form, whose volume is in shares.
    bool isOwnForm() const;

private:
    static std::size_t index(BarColumn column) { return static_cast<std::size_t>(column); }
    QString takeCell(std::size_t place, const QString &cell);
    QString set(BarColumn column, std::size_t place, const QString &cell);

    std::array<std::optional<std::size_t>, barColumnCount> m_places;
    std::vector<std::size_t> m_codePlaces;
    QStringList m_names;
    std::optional<VolumeUnit> m_namedUnit;
};

} // namespace Terminal
