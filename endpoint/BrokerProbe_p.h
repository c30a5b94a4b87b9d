#pragma once

#include <QLocalSocket>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>

namespace LocalCommunication {

/// Asks a broker again and again whether it is alive, as a client of its bus that says nothing else. Its
/// socket does not tell: the system takes connections for a process that hangs.
class BrokerProbe : public QObject
{
    Q_OBJECT

public:
    BrokerProbe(std::chrono::milliseconds interval, QObject *parent);

    void start(const QString &socketPath);
    void stop();

Q_SIGNALS:
    /// The broker has left three questions in a row unanswered. Nothing is asked any more until start().
    void unanswered();

private:
    void ask();

    QString m_socketPath;
    QLocalSocket m_socket;
    QTimer m_timer;
    int m_openQuestions = 0; // counted in turns of the event loop: a terminal that stood still blames nobody
};

} // namespace LocalCommunication
