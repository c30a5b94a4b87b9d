#pragma once

#include "endpoint/BusMessage_p.h"
#include "endpoint/DeliveryTurns_p.h"

#include <QObject>
#include <QPointer>

#include <deque>

namespace LocalCommunication {

/// Hands over what has arrived, one message after the other, so that the event loop keeps its turns: what
/// takes longer than its share of a turn, which all inboxes of a thread have together, goes on in a later
/// one, after the user's input.
class Inbox : public QObject
{
    Q_OBJECT

public:
    explicit Inbox(QObject *parent) : QObject(parent) {}
    ~Inbox() override;

    void add(BusMessage &&message);

    /// Hands over what is there, unless others wait for that. A receiver may do anything meanwhile: add,
    /// clear, run an event loop, in which the messages after its own go on, or destroy this object.
    void run();

    /// The same in a later turn of the event loop.
    void runSoon();

    /// For DeliveryTurns: hands over for the rest of this turn's time.
    void handOver();

    void clear();

    /// In another thread there are other turns.
    bool event(QEvent *event) override;

Q_SIGNALS:
    void delivered(const LocalCommunication::BusMessage &message);

private:
    bool hasTurns();
    void leaveTurns();

    std::deque<BusMessage> m_messages;
    QPointer<DeliveryTurns> m_turns;
};

} // namespace LocalCommunication
