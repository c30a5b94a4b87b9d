#pragma once

#include "endpoint/BusMessage_p.h"

#include <QString>

#include <deque>

namespace LocalCommunication {

/// What one connection was given to send and has not sent yet. It has a limit, because a broker that does
/// not read would otherwise cost the terminal its memory.
///
/// A message is either held back here, while the broker has not accepted this client, or it lies in the
/// MQTT library, which sends in the order in which it was given.
class Outbox
{
public:
    /// Empty, or why the message is not taken.
    QString problemWith(const BusMessage &message) const;

    void hold(const BusMessage &message);

    /// Oldest first; nothing is held afterwards.
    std::deque<BusMessage> takeHeld();

    /// The library has the message now.
    void handOver(const BusMessage &message);

    /// So many more messages have left the library.
    void noteSent(int count);

    /// Messages held back or in the library.
    int size() const { return static_cast<int>(m_held.size() + m_handedOver.size()); }

    void clear();

private:
    std::deque<BusMessage> m_held;
    std::deque<qint64> m_handedOver; // the size of each
    qint64 m_bytes = 0;              // of both
};

} // namespace LocalCommunication
