#pragma once

#include "endpoint/BusMessage_p.h"
#include "endpoint/DeliveryTurns_p.h"

#include <QObject>
#include <QPointer>

#include <chrono>
#include <cstddef>
#include <deque>

namespace LocalCommunication {

/// Hands over what has arrived, one message after the other, so that the event loop keeps its turns: what
/// takes longer than its share of a turn, which all inboxes of a thread have together, goes on in a later
/// one, after the user's input.
///
/// Its memory is bounded by who adds: while it is full nothing more is read from the bus, where the broker
/// keeps what comes. Only for an answer that is waited for more is read, until it is overfull.
class Inbox : public QObject
{
    Q_OBJECT

public:
    explicit Inbox(QObject *parent) : QObject(parent) {}
    ~Inbox() override;

    static constexpr qint64 fullBytes = 64 << 20;
    static constexpr qint64 overfullBytes = fullBytes + (256 << 20); ///< and the largest message besides

    void add(BusMessage &&message);

    /// More waits than a receiver that stood still for a moment finds.
    bool isCrowded() const { return m_messages.size() >= crowd; }

    bool isFull() const { return m_bytes >= fullBytes; }
    bool isOverfull() const { return m_bytes >= overfullBytes; }

    /// How long its owner may read from the bus in this turn, so that all of a thread together leave the
    /// event loop its turns.
    std::chrono::nanoseconds readingTime();

    /// Hands over what is there, unless others wait for that. A receiver may do anything meanwhile: add,
    /// clear, run an event loop, in which the messages after its own go on, or destroy this object.
    void run();

    /// The same in a later turn of the event loop.
    void runSoon();

    /// What it shares with the others of its thread; none where no event loop can be.
    DeliveryTurns *turns();

    /// For DeliveryTurns: hands over for the rest of this turn's time.
    void handOver();

    void clear();

    /// In another thread there are other turns.
    bool event(QEvent *event) override;

Q_SIGNALS:
    void delivered(const LocalCommunication::BusMessage &message);
    /// It was full, and is not any more.
    void hasRoom();

private:
    static constexpr std::size_t crowd = 16;

    void leaveTurns();
    void handOverNext();

    std::deque<BusMessage> m_messages;
    qint64 m_bytes = 0; ///< that they cost
    QPointer<DeliveryTurns> m_turns;
};

} // namespace LocalCommunication
