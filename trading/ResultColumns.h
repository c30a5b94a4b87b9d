// The columns of lists of results, written once: for the command `results`, for answers on the bus, and for
// the list in the terminal's window and the file that it writes.
#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace Trading {

/// What a row of a list of results stands for.
enum class ResultGroup { Sale, Trip, Security, Month, Year };

/// All of them.
const std::vector<ResultGroup> &resultGroups();

/// "sale", "trip", "security", "month" or "year": on command lines and in messages. Do not change.
QString wordOf(ResultGroup group);
/// The group of its word; letter case matters.
std::optional<ResultGroup> resultGroupOf(const QString &word);

/// What stands in a cell.
enum class ResultField {
    Date,
    Time,
    Month,
    Year,
    Code,
    Market,
    Name,
    Opened,
    Closed,
    Price,
    Quantity,
    SharesIn,
    SharesOut,
    Sales,
    Amount,
    Fee,
    Bought,
    Sold,
    Fees,
    StampDuty,
    SoldCost,
    Profit,
    Percent,
    Dividends,
    Taxes,
    Interest,
    Total,
    Held,
    HeldCost,
    CostPrice,
    Method,
};

/// How the text of a cell is to be read.
enum class ResultKind {
    Text,    ///< a code, a name, a day, a word
    Count,   ///< a whole number that is no amount of the account
    Price,   ///< yuan per share, as it was dealt
    Shares,  ///< a whole number
    Money,   ///< yuan, with two decimals or as many as the amount has
    Gain,    ///< the same of what was earned, so that less than nothing is a loss
    Percent, ///< with two decimals; empty where there is nothing to compare with
    Cost,    ///< yuan per share that is held, with three decimals; empty when nothing is
};

struct ResultColumn
{
    ResultField field;
    const char *key; ///< heads the column in files, and is the key on the bus. Do not change
    ResultKind kind;
    bool isSummed; ///< it has a sense in the sum of all rows
};

/// The column of a field.
const ResultColumn &columnOf(ResultField field);
/// The column of its key; null for none.
const ResultColumn *findResultColumn(const QString &key);

/// The fields of the rows of a list, from the left. A file has ResultField::Method besides, as its last.
const std::vector<ResultField> &fieldsOf(ResultGroup group);

} // namespace Trading
