#pragma once

#include "terminal/services/ChildProcess.h"

#include <QElapsedTimer>
#include <QString>
#include <QTimer>

namespace Terminal {

/// The trading module as a child of the terminal: started, started again when it ends by itself, and
/// stopped with the terminal. It stands by while another one serves the same ledger. It speaks the language
/// it was started with, "zh" or "en".
class TradeModuleProcess : public QObject
{
    Q_OBJECT

public:
    TradeModuleProcess(const QString &program, const QString &ledger, const QString &busAddress,
                       const QString &language, QObject *parent);
    ~TradeModuleProcess() override;

    void start();

    /// Number of the process; 0 while none runs.
    qint64 processId() const { return m_process.processId(); }

    /// Ends one that does not answer any more; another one is started as always.
    void replace();

Q_SIGNALS:
    /// It could not be started, or ended by itself; the text is for the user and says why, in the module's
    /// own words, and what to do where that is known. Said once for tries that end for the same reason, one
    /// soon after the other.
    void failed(const QString &reason);

private:
    void passWordsOn();
    void handleEnd();
    QString reasonOfEnd() const;
    void handleError(QProcess::ProcessError error);

    ChildProcess m_process;
    QTimer m_restart;
    QElapsedTimer m_sinceStart;
    bool m_hangs = false; // and is being ended
    QByteArray m_words;   // what it said last
    QString m_toldReason;
};

} // namespace Terminal
