#pragma once

#include "terminal/data/TextCells.h"

#include <QString>

#include <array>
#include <cstddef>
#include <optional>

namespace Terminal {

/// What a column of a file of corporate actions holds.
enum class ActionColumn {
    ExDate,
    Dividend,     ///< cash before tax
    Bonus,        ///< 送股, or 送转股 in one column: shares received for nothing
    FromReserves, ///< 转增: likewise, where a file tells them apart
    Split,        ///< how many shares one becomes: 2 for a split of one into two, 0.5 where two become one
    Rights,       ///< 配股: shares that may be bought
    RightsPrice,  ///< at this price
    Code,
    Ignored ///< what prices do not depend on: days of announcement and record, names, remarks
};

constexpr std::size_t actionColumnCount = 9;

/// Where the columns of a file of corporate actions are, by the names in its header. A name that is not known
/// is refused, and so is one that leaves open whether it counts for one share or for ten: either could be a
/// dividend that nobody misses.
class ActionColumns
{
public:
    /// Takes the header. Returns an empty text, or what is wrong with it.
    QString take(const Cells &header);

    std::size_t count() const { return m_count; }
    bool has(ActionColumn column) const { return m_found[index(column)].has_value(); }
    /// Requires has().
    std::size_t place(ActionColumn column) const { return m_found[index(column)]->place; }
    /// For how many shares its figures are: 1 or 10. Requires has().
    int shares(ActionColumn column) const { return m_found[index(column)]->shares; }
    /// As the file writes it. Requires has().
    QString header(ActionColumn column) const { return m_found[index(column)]->header; }

    /// True for a line that names the column of the ex-date.
    static bool isHeader(const Cells &cells);

private:
    struct Found
    {
        std::size_t place;
        int shares;
        QString header;
    };

    static std::size_t index(ActionColumn column) { return static_cast<std::size_t>(column); }
    QString takeCell(std::size_t place, const QString &cell);

    std::array<std::optional<Found>, actionColumnCount> m_found;
    std::size_t m_count = 0;
};

} // namespace Terminal
