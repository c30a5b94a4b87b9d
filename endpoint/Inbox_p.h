#pragma once

#include "endpoint/BusMessage_p.h"

#include <QObject>
#include <QTimer>

#include <deque>

namespace LocalCommunication {

/// Hands over what has arrived, one message after the other, so that the event loop keeps its turns: what
/// takes longer than a share of a turn goes on in a later one, after the user's input.
class Inbox : public QObject
{
    Q_OBJECT

public:
    explicit Inbox(QObject *parent);

    void add(BusMessage &&message);

    /// Hands over what is there. A receiver may do anything meanwhile: add, clear, run an event loop, in
    /// which the messages after its own go on, or destroy this object.
    void run();

    /// The same in a turn of the event loop of its own.
    void runSoon();

    void clear();

Q_SIGNALS:
    void delivered(const LocalCommunication::BusMessage &message);

private:
    std::deque<BusMessage> m_messages;
    QTimer m_later;
};

} // namespace LocalCommunication
