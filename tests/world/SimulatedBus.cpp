#include "tests/world/SimulatedBus.h"

#include <algorithm>
#include <utility>

namespace World {

using namespace std::chrono_literals;

namespace {

constexpr Instant usualShortest = 20us;
constexpr Instant usualLongest = 400us;

SimulatedBus *&current()
{
    static SimulatedBus *bus = nullptr;
    return bus;
}

} // namespace

SimulatedBus::SimulatedBus(SimulatedTime *time, Dice *dice, Trace *trace)
    : m_time(time),
      m_dice(dice),
      m_trace(trace),
      m_shortest(usualShortest),
      m_longest(usualLongest)
{
    current() = this;
}

SimulatedBus::~SimulatedBus()
{
    current() = nullptr;
}

SimulatedBus *SimulatedBus::instance()
{
    return current();
}

// Ways ------------------------------------------------------------------------------------------

SimulatedBus::Link *SimulatedBus::linkOf(int socket)
{
    const auto link = m_links.find(socket);
    return link == m_links.end() ? nullptr : &link->second;
}

/// Nothing overtakes what was sent before it.
Instant SimulatedBus::arrival(Instant *lastArrival)
{
    const Instant soon = m_time->now() + m_dice->time(m_shortest, m_longest);
    *lastArrival = std::max(*lastArrival + 1ns, soon);
    return *lastArrival;
}

/// Does at the broker what a packet asks for, if the connection has not been lost until it arrives.
void SimulatedBus::toBroker(int socket, std::function<void(Link *)> work)
{
    Link *const link = linkOf(socket);
    m_time->at(arrival(&link->lastUp), nobody, [this, socket, work = std::move(work)] {
        Link *const there = linkOf(socket);
        if (there != nullptr && there->isAtBroker) {
            work(there);
        }
    });
}

void SimulatedBus::toClient(int socket, Packet packet)
{
    Link *const link = linkOf(socket);
    m_time->at(arrival(&link->lastDown), nobody, [this, socket, packet = std::move(packet)] {
        Link *const there = linkOf(socket);
        if (there != nullptr && there->isAtBroker) {
            there->inbox.push_back(packet);
            m_time->noteReadable(socket);
        }
    });
}

// The broker ------------------------------------------------------------------------------------

int SimulatedBus::open(const QByteArray &clientId, const std::optional<BusMessage> &will)
{
    if (m_time->now() < m_awayUntil) {
        return -1;
    }
    const int socket = ++m_lastSocket;
    m_links.emplace(socket, Link{m_time->current(), clientId, will});
    m_trace->note(m_time->now(), "open", clientId, QByteArray::number(m_time->current()));
    toBroker(socket, [this, socket](Link *) { toClient(socket, {Packet::Greeting}); });
    repeatLast(socket);
    return socket;
}

void SimulatedBus::subscribe(int socket, int packet, const QVector<QByteArray> &paths)
{
    toBroker(socket, [this, socket, packet, paths](Link *link) {
        link->subscriptions.insert(paths.begin(), paths.end());
        toClient(socket, {Packet::Subscribed, packet});
        for (const QByteArray &path : paths) {
            if (const auto kept = m_retained.find(path); kept != m_retained.end()) {
                toClient(socket, {Packet::Message, 0, kept->second});
            }
        }
    });
}

bool SimulatedBus::publish(int socket, int packet, const BusMessage &message)
{
    Link *const link = linkOf(socket);
    if (link == nullptr || link->isKnownLost || isDying(link->process)) {
        return false;
    }
    if (!message.isRetained) {
        link->lastSent = message;
    }
    toBroker(socket, [this, socket, packet, message](Link *) { takeIn(socket, packet, message); });
    return true;
}

void SimulatedBus::takeIn(int socket, int packet, const BusMessage &message)
{
    if (message.isRetained) {
        m_retained[message.path] = message;
        toClient(socket, {Packet::Kept, packet});
    }
    route(socket, message);
}

void SimulatedBus::route(int from, const BusMessage &message)
{
    ++m_counts.messages;
    m_trace->note(m_time->now(), "bus", message.path, message.payload);
    for (auto &[socket, link] : m_links) {
        if (socket != from && link.isAtBroker && link.subscriptions.count(message.path) > 0) {
            toClient(socket, {Packet::Message, 0, message});
        }
    }
}

// The client ------------------------------------------------------------------------------------

std::optional<std::vector<SimulatedBus::Packet>> SimulatedBus::take(int socket)
{
    Link *const link = linkOf(socket);
    if (link == nullptr || link->isKnownLost) {
        return std::nullopt;
    }
    std::vector<Packet> packets(link->inbox.begin(), link->inbox.end());
    link->inbox.clear();
    return packets;
}

bool SimulatedBus::leave(int socket)
{
    Link *const link = linkOf(socket);
    if (link == nullptr || !link->isAtBroker) {
        return false;
    }
    link->isLeaving = true;
    toBroker(socket, [this, socket](Link *) { m_links.erase(socket); });
    return true;
}

/// One that leaves is still on its way to the broker, with what it sent before.
void SimulatedBus::close(int socket)
{
    Link *const link = linkOf(socket);
    if (link == nullptr || (link->isLeaving && link->isAtBroker)) {
        return;
    }
    lose(socket, true, {});
    m_links.erase(socket);
}

bool SimulatedBus::isReadable(int socket) const
{
    const auto link = m_links.find(socket);
    return link != m_links.end() && (link->second.isKnownLost || !link->second.inbox.empty());
}

// Faults ----------------------------------------------------------------------------------------

void SimulatedBus::setDelays(Instant shortest, Instant longest)
{
    m_shortest = shortest;
    m_longest = longest;
}

void SimulatedBus::heal()
{
    setDelays(usualShortest, usualLongest);
    m_dying.clear();
}

Instant SimulatedBus::troubledUntil() const
{
    return m_longest > usualLongest ? m_time->now() : std::max(m_troubledUntil, m_awayUntil);
}

int SimulatedBus::connectionCount(Process process) const
{
    return static_cast<int>(std::count_if(m_links.begin(), m_links.end(), [process](const auto &entry) {
        const Link &link = entry.second;
        return link.process == process && link.isAtBroker && !link.isLeaving;
    }));
}

void SimulatedBus::lose(int socket, bool hasWill, Instant untilKnown)
{
    Link *const link = linkOf(socket);
    if (!link->isAtBroker) {
        return;
    }
    link->isAtBroker = false;
    link->inbox.clear();
    m_troubledUntil = std::max(m_troubledUntil, m_time->now() + untilKnown);
    m_trace->note(m_time->now(), "lost", link->clientId);
    if (hasWill && link->will && !link->isLeaving) {
        takeIn(socket, 0, *link->will);
    }
    m_time->at(m_time->now() + untilKnown, nobody, [this, socket] {
        if (Link *const lost = linkOf(socket)) {
            lost->isKnownLost = true;
            m_time->noteReadable(socket);
        }
    });
}

bool SimulatedBus::loseConnection()
{
    std::vector<int> sockets;
    for (const auto &[socket, link] : m_links) {
        if (link.isAtBroker) {
            sockets.push_back(socket);
        }
    }
    if (sockets.empty()) {
        return false;
    }
    const int socket = sockets[static_cast<size_t>(m_dice->below(static_cast<std::int64_t>(sockets.size())))];
    const Link &link = *linkOf(socket);
    if (link.lastSent && m_dice->happens(50)) {
        m_repeatedLater[link.clientId] = *link.lastSent;
    }
    ++m_counts.lostConnections;
    lose(socket, true, m_dice->happens(50) ? Instant{} : m_dice->time(1ms, 2s));
    return true;
}

/// Quality 0 allows no repetition; a client or a broker of another make may do it all the same.
void SimulatedBus::repeatLast(int socket)
{
    const auto repeated = m_repeatedLater.find(linkOf(socket)->clientId);
    if (repeated == m_repeatedLater.end()) {
        return;
    }
    ++m_counts.repeated;
    toBroker(socket, [this, socket, message = repeated->second](Link *) { route(socket, message); });
    m_repeatedLater.erase(repeated);
}

void SimulatedBus::loseConnections(Process process)
{
    for (const auto &[socket, link] : m_links) {
        if (link.process == process) {
            lose(socket, true, {});
        }
    }
}

void SimulatedBus::dieAtMessage(Process process, int count)
{
    m_dying[process] = count;
}

bool SimulatedBus::isDying(Process process)
{
    const auto dying = m_dying.find(process);
    if (dying == m_dying.end() || --dying->second > 0) {
        return false;
    }
    if (!m_time->isFrozen(process)) {
        m_trace->note(m_time->now(), "died", QByteArray::number(process));
        m_time->kill(process);
        loseConnections(process);
    }
    return true;
}

void SimulatedBus::restart(Instant away)
{
    ++m_counts.restarts;
    m_awayUntil = m_time->now() + away;
    m_retained.clear();
    for (const auto &[socket, link] : m_links) {
        lose(socket, false, {});
    }
}

} // namespace World
