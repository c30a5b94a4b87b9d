#pragma once

#include "terminal/results/ResultsDesk.h"

#include <QSaveFile>

namespace Terminal {

/// Writes a whole list of results into a CSV file, the same that `trademodule results --csv` writes, in the
/// order that is shown. It asks for part after part; where the ledger changes meanwhile it begins anew. The
/// file is there when it is complete, or not at all.
class ResultsExport : public QObject
{
    Q_OBJECT

public:
    ResultsExport(const ResultsWish &wish, const QString &path, QObject *parent);

    /// Asks on the bus instance of `address`. Ends with finished(). To be called once.
    void start(const QString &address);

Q_SIGNALS:
    /// `error` is for the user; empty for none.
    void finished(const QString &error);

private:
    void begin();
    void take(const ResultsPart &part);
    void end(const QString &error);

    const ResultsWish m_wish;
    QSaveFile m_file;
    ResultsDesk m_desk;
    QTimer m_patience;
    QString m_state;
    qint64 m_next = 0; ///< number of the next row
    bool m_isOver = false;
};

} // namespace Terminal
