#pragma once

#include "terminal/services/ChildProcess.h"

#include "terminal/data/FileStamp.h"

#include <QElapsedTimer>
#include <QString>
#include <QTimer>

#include <chrono>

namespace Terminal {

/// The trading module as a child of the terminal: started, started again when it ends by itself, and
/// stopped with the terminal. One that ends soon, again and again, is tried less and less often, once a
/// minute in the end, and at once when the file of its ledger or its program has changed. It stands by while
/// another one serves the same ledger. It speaks the language it was started with, "zh" or "en".
class TradeModuleProcess : public QObject
{
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds defaultPause = std::chrono::seconds(2);

    /// The first pause before another try is `pause`.
    TradeModuleProcess(const QString &program, const QString &ledger, const QString &busAddress,
                       const QString &language, QObject *parent,
                       std::chrono::milliseconds pause = defaultPause);
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
    QString reasonOfNoStart() const;
    void handleError(QProcess::ProcessError error);
    void pauseAndTell(const QString &reason);
    void startWhenDue();
    QVector<FileStamp> stamps() const;

    ChildProcess m_process;
    const QString m_ledger;
    const std::chrono::milliseconds m_firstPause;
    std::chrono::milliseconds m_pause{}; // before the next start; longer after each short life
    QTimer m_restart;                    // looks whether that is due
    QElapsedTimer m_sinceStart;
    QElapsedTimer m_sinceEnd;
    QVector<FileStamp> m_stampsAtEnd;
    bool m_hangs = false; // and is being ended
    QByteArray m_words;   // what it said last
    QString m_toldReason;
};

} // namespace Terminal
