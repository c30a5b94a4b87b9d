#include "trademodule/import/StatementColumns.h"

#include "trademodule/import/ColumnNames.h"
#include "trademodule/import/ImportProfile.h"

namespace TradeModule {

namespace {

QVector<int> positionsIn(const QStringList &names, const QStringList &spellings)
{
    QVector<int> positions;
    for (const QString &spelling : spellings) {
        for (int i = 0; i < names.size(); ++i) {
            if (names[i] == spelling) {
                positions.append(i);
            }
        }
    }
    return positions;
}

} // namespace

StatementColumns::StatementColumns(const QStringList &headerCells, const ImportProfile &profile)
{
    for (const QString &cell : headerCells) {
        m_names.append(ColumnNames::plainName(cell));
        m_units.append(ColumnNames::unitOf(cell));
    }
    QVector<bool> isTaken(m_names.size(), false);
    const auto take = [this, &isTaken](Column column, const QVector<int> &positions) {
        for (const int position : positions) {
            if (!isTaken[position]) {
                isTaken[position] = true;
                m_positions[static_cast<size_t>(column)].append(position);
            }
        }
    };
    for (int i = 0; i < m_names.size(); ++i) { // the user's word comes first
        if (const auto column = profile.columnOf(m_names[i])) {
            take(*column, {i});
        }
    }
    for (const ColumnNames::Spellings &row : ColumnNames::spellings()) {
        take(row.column, positionsIn(m_names, row.names));
    }
    for (int i = 0; i < m_names.size(); ++i) {
        if (!isTaken[i] && ColumnNames::looksLikeFee(m_names[i])) {
            take(Column::OtherFee, {i});
        } else if (!isTaken[i] && ColumnNames::isUnused(m_names[i])) {
            take(Column::Unused, {i});
        } else if (!isTaken[i] && !m_names[i].isEmpty()) {
            m_unknownNames.append(m_names[i]);
            m_unknownPositions.append(i);
        }
    }
}

bool StatementColumns::isHeader() const
{
    const bool isOfTrades =
        has(Column::Price) && has(Column::Quantity) && (has(Column::Code) || has(Column::Name));
    const bool isOfMoney =
        has(Column::Date) && tellNet() && (has(Column::Business) || has(Column::Side)) && knownNames() > 3;
    return isOfTrades || isOfMoney;
}

int StatementColumns::knownNames() const
{
    int known = 0;
    for (const QVector<int> &positions : m_positions) {
        known += positions.size();
    }
    return known;
}

QString StatementColumns::nameOf(Column column) const
{
    return has(column) ? m_names[positionsOf(column).constFirst()] : QString();
}

QString StatementColumns::cell(Column column, const QStringList &cells) const
{
    const QVector<int> &positions = positionsOf(column);
    const int position = positions.isEmpty() ? cells.size() : positions.constFirst();
    return position < cells.size() ? cells[position] : QString();
}

QStringList StatementColumns::cells(Column column, const QStringList &cells) const
{
    QStringList found;
    for (const int position : positionsOf(column)) {
        found.append(cells.value(position));
    }
    return found;
}

QStringList StatementColumns::unknownCells(const QStringList &cells) const
{
    QStringList found;
    for (const int position : m_unknownPositions) {
        found.append(cells.value(position));
    }
    return found;
}

QString StatementColumns::nameOfUnknownUnit() const
{
    for (const Column column : {Column::Price, Column::Quantity, Column::Amount, Column::Net, Column::Income,
                                Column::Expense, Column::SharesAfter, Column::CashAfter}) {
        if (has(column) && m_units[positionsOf(column).constFirst()].shares == 0) {
            return nameOf(column);
        }
    }
    return {};
}

qint64 StatementColumns::unit(Column column, Trading::SecurityClass kind) const
{
    const ColumnUnit unit = has(column) ? m_units[positionsOf(column).constFirst()] : ColumnUnit();
    return kind == Trading::SecurityClass::Bond ? unit.bonds : unit.shares;
}

} // namespace TradeModule
