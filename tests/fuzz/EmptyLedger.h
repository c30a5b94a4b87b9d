#pragma once

#include <QString>
#include <QTemporaryDir>

/// The file of a ledger that nothing is in yet. Its tables are made once for the whole program, which takes
/// longer than most of what is done with them; each object has a copy of its own.
class EmptyLedger
{
public:
    EmptyLedger();
    ~EmptyLedger();
    Q_DISABLE_COPY_MOVE(EmptyLedger)

    /// For Ledger.
    QString location() const;

private:
    const QTemporaryDir m_folder; ///< in memory where that can be had: every change waits for its disk
};
