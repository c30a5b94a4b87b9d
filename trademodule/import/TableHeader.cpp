#include "trademodule/import/TableHeader.h"

#include <algorithm>

namespace TradeModule {

namespace {

QStringList headerCells(const SheetRow &row, Separator separator)
{
    return row.isCut ? row.cells : splitLine(row.text, separator);
}

} // namespace

TableHeader::TableHeader(const SheetRow &row, Separator separator, const StatementColumns &columns)
    : m_row(row),
      m_separator(separator),
      m_columns(columns)
{
    if (!row.isCut && separator == Separator::Blanks) {
        m_aligned.emplace(row.text, columns);
    }
}

StatementColumns TableHeader::columnsOf(const SheetRow &row, const ImportProfile &profile)
{
    StatementColumns best;
    for (const Separator separator : allSeparators) {
        const StatementColumns columns(headerCells(row, separator), profile);
        best = columns.knownNames() > best.knownNames() ? columns : best;
        if (row.isCut) {
            break;
        }
    }
    return best;
}

/// Of the ways to cut the line, the one that makes most of it.
std::optional<TableHeader> TableHeader::of(const SheetRow &row, const ImportProfile &profile)
{
    std::optional<TableHeader> best;
    for (const Separator separator : allSeparators) {
        const StatementColumns columns(headerCells(row, separator), profile);
        if (columns.isHeader() && (!best || columns.knownNames() > best->m_columns.knownNames())) {
            best = TableHeader(row, separator, columns);
        }
        if (row.isCut) {
            break;
        }
    }
    return best;
}

bool TableHeader::mayBeHeader(const SheetRow &row)
{
    const auto hasDigit = [](const QString &text) {
        return std::any_of(text.begin(), text.end(), [](QChar character) {
            return character >= QLatin1Char('0') && character <= QLatin1Char('9');
        });
    };
    return row.isCut ? std::none_of(row.cells.begin(), row.cells.end(), hasDigit) : !hasDigit(row.text);
}

bool TableHeader::isOfAnotherTable(const SheetRow &row, const ImportProfile &profile)
{
    constexpr int enoughNames = 4;
    return std::any_of(std::begin(allSeparators), std::end(allSeparators), [&](Separator separator) {
        return StatementColumns(headerCells(row, separator), profile).knownNames() >= enoughNames;
    });
}

QStringList TableHeader::cells(const SheetRow &row) const
{
    if (row.isCut) {
        return row.cells;
    }
    return m_aligned ? m_aligned->cells(row.text) : splitLine(row.text, m_separator);
}

bool TableHeader::isRepeatedBy(const SheetRow &row) const
{
    return row.isCut ? row.cells == m_row.cells : row.text.trimmed() == m_row.text.trimmed();
}

} // namespace TradeModule
