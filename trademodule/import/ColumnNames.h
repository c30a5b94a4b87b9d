#pragma once

#include "trademodule/import/StatementColumns.h"

#include <QString>

#include <optional>
#include <vector>

namespace TradeModule {

/// How statements name their columns.
namespace ColumnNames {

/// The spellings of a meaning.
struct Spellings
{
    Column column;
    const char *key;   ///< in a profile: "date"
    QStringList names; ///< the best first: a statement may have several of them
};

/// All of them, but for Column::Unused.
const std::vector<Spellings> &spellings();

/// True for names that are known to be of no use.
bool isUnused(const QString &name);
/// True for a name that no table has, but that can only be a fee's.
bool looksLikeFee(const QString &name);

/// The name without blanks and without a unit: "成交金额(元)" is "成交金额".
QString plainName(const QString &headerCell);
/// The unit in a name; that of one where none stands or it counts nothing (元), zero for an unknown one.
ColumnUnit unitOf(const QString &headerCell);

/// The meaning that a profile's key names.
std::optional<Column> ofKey(const QString &key);

} // namespace ColumnNames

} // namespace TradeModule
