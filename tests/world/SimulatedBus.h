#pragma once

#include "endpoint/BusMessage_p.h"
#include "tests/world/Dice.h"
#include "tests/world/SimulatedTime.h"
#include "tests/world/Trace.h"

#include <QByteArray>
#include <QVector>

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace World {

using LocalCommunication::BusMessage;

/// The broker of a world and the connections to it, as docs/bus-protocol.md tells them: one ordered stream
/// for each connection, each message at most once, retained messages, wills. How long a message takes is left
/// to chance, its order is not. The product's own client speaks to it through SimulatedConnection.cpp, in the
/// place of its MQTT library.
class SimulatedBus
{
public:
    /// What a broker sends to a client.
    struct Packet
    {
        enum Kind {
            Greeting,
            Subscribed, ///< `number` is that of the packet
            Kept,       ///< the same of a retained message
            Message
        };
        Kind kind;
        int number = 0;
        BusMessage message{};
    };

    /// There is one while a world is simulated. All stay the caller's and outlive this object.
    SimulatedBus(SimulatedTime *time, Dice *dice, Trace *trace);
    ~SimulatedBus();
    Q_DISABLE_COPY_MOVE(SimulatedBus)
    static SimulatedBus *instance();

    // For the client's connection:

    /// The number of a new connection of the current program; -1 when nobody listens.
    int open(const QByteArray &clientId, const std::optional<BusMessage> &will);
    void subscribe(int socket, int packet, const QVector<QByteArray> &paths);
    /// False when the connection is known to be lost.
    bool publish(int socket, int packet, const BusMessage &message);
    /// What has come; nothing when the connection is lost.
    std::optional<std::vector<Packet>> take(int socket);
    /// Without its will; true when the broker has taken all.
    bool leave(int socket);
    /// The client forgets the connection: for the broker it is lost.
    void close(int socket);
    bool isReadable(int socket) const;

    // For the world:

    /// What a message takes from here on.
    void setDelays(Instant shortest, Instant longest);
    /// Loses a connection, chosen by chance, with all that is under way; its client knows it at once or a
    /// moment later. One that joins again may tell its last message once more. False when there is none.
    bool loseConnection();
    /// Loses all connections of a program that has ended.
    void loseConnections(Process process);
    /// A program loses all its connections, and does nothing more, in place of its n-th message from now on;
    /// 1 is the next one.
    void dieAtMessage(Process process, int count);
    /// Ends the broker, with all that it kept, and starts it again later.
    void restart(Instant away);
    /// Stops losing and delaying.
    void heal();
    /// The last instant, as far as is known, at which a message could be lost or late by a fault of the bus.
    Instant troubledUntil() const;
    /// How many connections of a program the broker has.
    int connectionCount(Process process) const;

    /// How many messages of each fault.
    struct Counts
    {
        qint64 messages = 0;
        int lostConnections = 0;
        int repeated = 0;
        int restarts = 0;
    };
    const Counts &counts() const { return m_counts; }

private:
    struct Link
    {
        Process process;
        QByteArray clientId;
        std::optional<BusMessage> will;
        std::set<QByteArray> subscriptions{};
        std::deque<Packet> inbox{};
        bool isAtBroker = true;   ///< the broker has it
        bool isKnownLost = false; ///< to the client
        bool isLeaving = false;
        Instant lastUp{}; ///< when the last packet on each way arrives
        Instant lastDown{};
        std::optional<BusMessage> lastSent{};
    };

    Instant arrival(Instant *lastArrival);
    Link *linkOf(int socket);
    void toBroker(int socket, std::function<void(Link *)> work);
    void toClient(int socket, Packet packet);
    void route(int from, const BusMessage &message);
    void takeIn(int socket, int packet, const BusMessage &message);
    void lose(int socket, bool hasWill, Instant untilKnown);
    bool isDying(Process process);
    void repeatLast(int socket);

    SimulatedTime *const m_time;
    Dice *const m_dice;
    Trace *const m_trace;
    Instant m_shortest;
    Instant m_longest;
    std::map<int, Link> m_links;
    int m_lastSocket = SimulatedTime::firstSocket;
    std::map<QByteArray, BusMessage> m_retained;
    std::map<Process, int> m_dying;                   // messages until it ends
    std::map<QByteArray, BusMessage> m_repeatedLater; // by client
    Instant m_awayUntil{};
    Instant m_troubledUntil{};
    Counts m_counts;
};

} // namespace World
