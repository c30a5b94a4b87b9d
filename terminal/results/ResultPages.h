#pragma once

#include "terminal/results/ResultsPart.h"

#include <QHash>

namespace Terminal {

/// The rows of a list that have come, by pages: a list may have more rows than a window should hold, and no
/// more of them are kept than somebody may look at.
class ResultPages
{
public:
    static constexpr qint64 rowsOfPage = 200;
    static constexpr int mostPages = 50;

    /// Forgets all.
    void clear();
    /// Takes rows that begin a page. What was kept of another state of the ledger is forgotten; then true
    /// comes back.
    bool take(const ResultsPart &part);

    /// Null while the row has not come.
    const ResultRow *row(qint64 number) const;
    /// The first row of the first page that is missing of the rows from `first` to `last`; -1 when all are
    /// there.
    qint64 missing(qint64 first, qint64 last) const;

private:
    void forgetFarFrom(qint64 page);

    QString m_state;
    QHash<qint64, std::vector<ResultRow>> m_pages;
};

} // namespace Terminal
