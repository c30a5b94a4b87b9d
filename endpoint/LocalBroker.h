#pragma once

#include "endpoint/EndPointExport.h"

#include <QObject>
#include <QString>

#include <memory>

namespace LocalCommunication {

/// The terminal's own broker: a child process that serves the socket which belongs to a terminal's
/// directory. A program needs one of these, and only the terminal does.
///
///  1. start() returns at once; stateChanged() tells the rest. Endpoints may connect before it runs.
///  2. When the broker dies it is started again, after a longer delay each time. One that has not
///     answered for six to eight seconds is ended first.
///  3. When another terminal serves the same directory already, its broker is used, and replaced
///     when it ends. Two brokers never serve one directory: a lock is held by terminal and broker.
///  4. stop() or the destructor ends the broker. It also ends when the terminal crashes.
///
/// Nothing is started when the directory's endpoint.ini points to a broker elsewhere.
class ENDPOINT_EXPORT LocalBroker : public QObject
{
    Q_OBJECT

public:
    /// What a terminal can tell its user about the bus.
    enum class State {
        Stopped,   ///< not started, or stopped
        Starting,  ///< also: waiting for the broker of another terminal to come or to go
        Running,   ///< the child of this object serves the bus
        Reused,    ///< the broker of another terminal does
        Elsewhere, ///< endpoint.ini names the broker; there is nothing to do here
        Failed,    ///< problem() tells why: it cannot start, or hung; tried again unless the address is wrong
    };
    Q_ENUM(State)

    /// Starts nothing yet.
    explicit LocalBroker(QObject *parent = nullptr);

    /// Stops the broker; may take as long as stop().
    ~LocalBroker() override;

    /// Serves the bus of the terminal in directory `address`. A broker started before is stopped.
    void start(const QString &address);

    /// Ends the broker and waits for its end: a few milliseconds, one second when it hangs.
    void stop();

    /// As last told by stateChanged().
    State state() const;

    /// Empty, or what keeps the broker from running and what to do about it.
    QString problem() const;

    /// Process number of the child, 0 when there is none.
    qint64 processId() const;

    /// The broker's program; before start(). Default: "mosquitto" from PATH or the usual places.
    void setProgram(const QString &path);

Q_SIGNALS:
    /// The state is another one now.
    void stateChanged(LocalCommunication::LocalBroker::State state);

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace LocalCommunication
