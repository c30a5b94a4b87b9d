#pragma once

#include "trademodule/import/ReadOptions.h"
#include "trademodule/ledger/Execution.h"

#include <QHash>
#include <QStringList>

#include <map>
#include <optional>

namespace TradeModule {

/// A line that cannot be read, and why.
struct BadRow
{
    int line;
    QString reason;
};

/// What a statement says.
struct StatementContents
{
    Executions executions; ///< oldest first
    QHash<SecurityId, QString> names;
    std::map<QString, int> leftOut; ///< entries that are no trades, by kind
    QVector<BadRow> badRows;
    int bonuses = 0;      ///< entries of bonus shares among the executions
    int repeatedRows = 0; ///< dropped: the same deal number and everything else once more
    int equalRows = 0;    ///< kept: equal to another row, but nothing says that they are one fill
};

/// Reads the executed trades a broker's client exported, by the names in its header line. An Error when
/// the text as a whole is no such statement or lacks a date or a code that `options` does not give.
StatementContents readStatement(const QString &text, const ReadOptions &options);

} // namespace TradeModule
