#include "trademodule/import/EntrySide.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/CellValue.h"
#include "trademodule/import/EntryKind.h"

#include <algorithm>

namespace TradeModule::EntrySide {

namespace {

bool isNothing(const StatementRow &row, Column column)
{
    return CellValue::number(row.cell(column)).value_or(1.0) == 0.0;
}

bool isMoneyless(const StatementRow &row)
{
    return isNothing(row, Column::Price) || isNothing(row, Column::Quantity);
}

/// Everything that says what the entry is. A remark is heard only where nothing was traded or no other
/// column tells the side: elsewhere it is the user's own note.
QStringList wordsOf(const StatementRow &row)
{
    QStringList found = row.cells(Column::Side) + row.cells(Column::Business);
    if (isMoneyless(row) || !(row.has(Column::Side) || row.has(Column::Business))) {
        found += row.cells(Column::Remark);
    }
    for (QString &word : found) {
        word = EntryKind::plainWord(word);
    }
    found.removeAll(QString());
    return found;
}

/// What the words say of an entry that is no trade.
std::optional<LeftOut> noTrade(const StatementRow &row, const QStringList &words)
{
    for (const QString &word : words) {
        if (const auto kind = EntryKind::ofNoTrade(word)) {
            return LeftOut{*kind};
        }
    }
    if (isNothing(row, Column::Quantity)) {
        return LeftOut{translated("entries without a quantity")};
    }
    if (isNothing(row, Column::Price)) {
        return LeftOut{translated("entries without a price")};
    }
    return std::nullopt;
}

Side sideOfTrade(const StatementRow &row, const QStringList &words)
{
    if (const auto side = EntryKind::sideOfSideColumn(EntryKind::plainWord(row.cell(Column::Side)))) {
        return *side;
    }
    for (const QString &word : words) {
        if (const auto side = EntryKind::side(word)) {
            return *side;
        }
    }
    throw Error(translated("\"%1\" says neither buy nor sell").arg(words.join(QLatin1Char(' '))));
}

} // namespace

std::optional<LeftOut> furniture(const StatementRow &row)
{
    const QStringList firstCells = row.allCells().mid(0, 3);
    if (std::any_of(firstCells.begin(), firstCells.end(), &EntryKind::isTotal)) {
        return LeftOut{translated("totals")};
    }
    const bool hasEntry = !CellValue::isEmpty(row.cell(Column::Code)) ||
                          !CellValue::isEmpty(row.cell(Column::Quantity)) ||
                          CellValue::date(row.cell(Column::Date)).has_value();
    if (!hasEntry && row.has(Column::Code)) {
        return LeftOut{translated("lines of text")};
    }
    return std::nullopt;
}

std::variant<Side, LeftOut> of(const StatementRow &row)
{
    const QStringList words = wordsOf(row);
    if (std::any_of(words.begin(), words.end(), &EntryKind::isBonus)) {
        return Side::Bonus;
    }
    if (const auto kind = noTrade(row, words)) {
        return *kind;
    }
    return sideOfTrade(row, words);
}

} // namespace TradeModule::EntrySide
