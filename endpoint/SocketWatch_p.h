#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace LocalCommunication {

/// Tells from the event loop when there is something to do on a socket. To be destroyed when the socket is
/// closed, before another one can have its number; also inside a slot of its signals.
class SocketWatch : public QObject
{
    Q_OBJECT

public:
    SocketWatch(int descriptor, QObject *parent);

    /// Whether readable() is wanted; at first it is.
    void setWatchesReading(bool wanted) { m_reading.setEnabled(wanted); }

    /// Whether writable() is wanted; at first it is not.
    void setWatchesWriting(bool wanted);

Q_SIGNALS:
    void readable();
    void writable();

private:
    QSocketNotifier m_reading;
    QSocketNotifier *m_writing = nullptr; // a child, made when wanted first, on a Unix socket hardly ever
};

} // namespace LocalCommunication
