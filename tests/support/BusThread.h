#pragma once

#include "endpoint/EndPoint.h"

#include <QSemaphore>

#include <functional>
#include <memory>

class QThread;

/// Another program on the bus: an end point in a thread of its own, because whoever asks stands still
/// meanwhile.
class BusThread
{
public:
    using EndPoint = LocalCommunication::EndPoint;

    /// Called in the thread for every message.
    using Handler =
        std::function<void(EndPoint &own, const QByteArray &payload, const QByteArray &replyChannel)>;

    /// Hears the messages of `topic` on channel "Global"; returns when the bus hands them over.
    BusThread(const QString &address, const QByteArray &topic, Handler handler);
    ~BusThread();
    Q_DISABLE_COPY_MOVE(BusThread)

private:
    void run(const QString &address, const QByteArray &topic, const Handler &handler);

    std::unique_ptr<QThread> m_thread;
    QSemaphore m_ready;
};
