#pragma once

#include "trademodule/import/StatementColumns.h"

#include <QVector>

namespace TradeModule {

/// A word of a line and the screen columns that it takes: Chinese characters take two.
struct PlacedWord
{
    QString text;
    int start;
    int end; ///< behind its last column
};

/// Cuts lines whose columns are aligned with blanks under a header. A line with as many words as the header
/// has names is cut word by word, if each can be what its column holds. In any other an empty cell, or a name
/// with a blank in it, moved the words: they are given to the columns in the way that fits best what columns
/// can hold and where they stand.
class AlignedColumns
{
public:
    AlignedColumns(const QString &header, const StatementColumns &columns);
    QStringList cells(const QString &line) const;

private:
    /// How badly some words, from the one to before the other, fit a column; more than any place could cost
    /// when it cannot hold them.
    int misfit(const QVector<PlacedWord> &words, int from, int to, int column) const;
    bool fitsWordByWord(const QVector<PlacedWord> &words) const;
    QVector<int> bestCuts(const QVector<PlacedWord> &words) const;

    QVector<PlacedWord> m_names;
    QVector<Column> m_meanings; ///< of each column; Column::Unused for what is not known
};

} // namespace TradeModule
