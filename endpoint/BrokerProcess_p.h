#pragma once

#include <QProcess>
#include <QString>

#include <unistd.h>

namespace LocalCommunication {

class DirectoryLock;

/// The process of a terminal's own broker. It holds the lock of its directory for as long as it lives, and it
/// does not outlive the terminal. What it writes goes to the log.
class BrokerProcess : public QProcess
{
    Q_OBJECT

public:
    BrokerProcess(const DirectoryLock &lock, QObject *parent);
    ~BrokerProcess() override { end(); }

    /// Begins to serve the socket "bus.sock" in `directory` with `program`, or, when that is empty, with the
    /// mosquitto of this machine. Empty, or why it cannot.
    QString launch(const QString &program, const QString &directory);

    /// Ends it and waits for its end: a few milliseconds, one second when it hangs. No signal follows.
    void end();

Q_SIGNALS:
    /// After launch(), when it turns out that the program cannot be run.
    void couldNotStart(const QString &problem);

    /// The broker has ended by itself or was killed. `lastWords` are those of its last warning, or empty.
    void ended(const QString &lastWords);

protected:
    void setupChildProcess() override;

private:
    QString writeConfiguration() const;
    QString startProblem() const;
    void handleOutput();
    void handleEnd();

    const DirectoryLock &m_lock;
    const pid_t m_terminal = ::getpid();
    QString m_lastWords;
};

} // namespace LocalCommunication
