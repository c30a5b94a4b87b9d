// Lists of results as the trading module tells them: what can be asked for, and what is answered.
#pragma once

#include "trading/Question.h"
#include "trading/ResultColumns.h"

#include <QJsonObject>
#include <QStringList>

#include <optional>
#include <vector>

namespace Terminal {

using Trading::ResultField;
using Trading::ResultGroup;

/// A list and its order.
struct ResultsWish
{
    ResultGroup group = ResultGroup::Security;
    std::optional<ResultField> order{}; ///< nothing: as the module lists it, by code and time
    bool isDescending = false;

    friend bool operator==(const ResultsWish &a, const ResultsWish &b)
    {
        return a.group == b.group && a.order == b.order && a.isDescending == b.isDescending;
    }
};

/// Rows of a list that are asked for.
struct RowsAsked
{
    ResultsWish wish{};
    qint64 first = 0;
    int most = 1;

    /// The question, without where its answer is to come.
    Trading::Question question() const;
};

/// A row: a text for each column of its list.
using ResultRow = QStringList;

/// Rows of a list, and what is known of the whole.
struct ResultsPart
{
    ResultsWish wish{};
    qint64 first = 0;
    std::vector<ResultRow> rows{};
    qint64 count = 0;         ///< of all rows of the list
    ResultRow sum{};          ///< of all rows; empty in columns that have none
    QString state{};          ///< another text whenever the ledger has changed
    QString costMethod{};     ///< how costs are reckoned, the module's word
    QStringList incomplete{}; ///< codes of which earlier statements are missing
};

/// The part that an answer brings to what was asked. A key that is missing is an empty text.
ResultsPart readPart(const QJsonObject &answer, const RowsAsked &asked);

} // namespace Terminal
