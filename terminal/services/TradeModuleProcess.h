#pragma once

#include "terminal/services/ChildProcess.h"

#include <QElapsedTimer>
#include <QString>
#include <QTimer>

namespace Terminal {

/// The trading module as a child of the terminal: started, started again when it ends by itself, and
/// stopped with the terminal. While another process serves the ledger it waits, and takes over when that one
/// ends. It speaks the language it was started with, "zh" or "en".
class TradeModuleProcess : public QObject
{
    Q_OBJECT

public:
    TradeModuleProcess(const QString &program, const QString &ledger, const QString &busAddress,
                       const QString &language, QObject *parent);
    ~TradeModuleProcess() override;

    void start();

Q_SIGNALS:
    /// It could not be started, or ended by itself; the text is for the user and says why, in the module's
    /// own words. Said once for tries that end for the same reason, one soon after the other.
    void failed(const QString &reason);

private:
    void passWordsOn();
    void handleEnd();
    void handleError(QProcess::ProcessError error);

    ChildProcess m_process;
    QTimer m_restart;
    QElapsedTimer m_sinceStart;
    QString m_lastWords;
    QString m_toldReason;
};

} // namespace Terminal
