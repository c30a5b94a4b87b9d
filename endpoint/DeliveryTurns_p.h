#pragma once

#include "endpoint/BusPatience_p.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <deque>
#include <map>
#include <memory>

class QAbstractEventDispatcher;

namespace LocalCommunication {

class Inbox;

/// What the clients of a thread share in a turn of its event loop. Their inboxes take turns: together they
/// hand messages over for a few milliseconds in a turn of its event loop, however many they are, and the rest
/// waits until the user's input was handled. A thread has one of these, as long as one of its inboxes lives.
/// And who waits for an answer keeps all of them waiting, so they have one patience with a module, which
/// outlasts each of them.
///
/// As long as nobody waits this costs the event loop nothing: it tells itself when a turn is over.
class DeliveryTurns : public QObject
{
    Q_OBJECT

public:
    /// That of this thread; none where there is no event loop. Every enter() has its leave().
    static DeliveryTurns *enter();
    void leave(const Inbox *inbox);

    /// True while there is time to hand over in this turn of the event loop; it begins with the first
    /// question.
    bool isOpen();

    /// How long each member may read from the bus in a turn: together they leave it to others.
    std::chrono::nanoseconds readingTime() const;

    /// That of all who ask on this bus. Who holds it has joined the bus.
    std::shared_ptr<BusPatience> patience(const QString &bus);

    bool isAnybodyWaiting() const { return !m_waiting.empty(); }

    /// Has `inbox` hand over in a later turn, after those that wait already. It waits once.
    void queue(Inbox *inbox);

private:
    explicit DeliveryTurns(QAbstractEventDispatcher *dispatcher);

    void beTold();
    void endTurn();
    void goOn();
    void goOnLater();

    int m_members = 0;
    std::deque<Inbox *> m_waiting;
    QTimer m_nextTurn;     ///< runs while an inbox waits
    bool m_isUsed = false; ///< this turn's time
    bool m_isTold = false; ///< by the event loop of a turn since it went on
    QDeadlineTimer m_end;
    std::map<QString, std::shared_ptr<BusPatience>> m_patiences; // by their bus
};

} // namespace LocalCommunication
