#include "tests/trademodule/support/MessageProxy.h"

#include "tests/trademodule/support/ServerSocket.h"

#include <QDeadlineTimer>
#include <QtEndian>

#include <array>
#include <optional>
#include <vector>

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds delay = 10ms;
constexpr std::chrono::milliseconds longestSilence = 40ms;
constexpr int turn = 10; // milliseconds, as poll() has them

/// The first message of the bytes; nothing as long as it is not whole. A letter for its kind, but for the
/// first one of a program, and the length of all but the letter.
std::optional<QByteArray> wholeMessage(const QByteArray &bytes, bool isGreeting)
{
    const int lengthAt = isGreeting ? 0 : 1;
    constexpr int lengthSize = 4;
    if (bytes.size() < lengthAt + lengthSize) {
        return {};
    }
    const int size = lengthAt + qFromBigEndian<qint32>(bytes.constData() + lengthAt);
    return bytes.size() < size ? std::nullopt : std::optional(bytes.left(size));
}

} // namespace

MessageProxy::MessageProxy(const QString &server)
    : m_server(server),
      m_listener(ServerSocket::listenIn(m_directory.path())),
      m_thread([this] { serve(); })
{
}

MessageProxy::~MessageProxy()
{
    m_ends = true;
    m_thread.join();
    ::close(m_listener);
}

void MessageProxy::failAt(int message, Fault fault)
{
    m_fault = fault;
    m_hasFailed = false;
    m_messages = 0;
    m_failing = message;
}

void MessageProxy::mend()
{
    m_failing = 0;
    m_isAway = false;
}

void MessageProxy::serve()
{
    std::vector<std::thread> connections;
    while (!m_ends) {
        pollfd waiting{m_listener, POLLIN, 0};
        if (::poll(&waiting, 1, turn) > 0) {
            const int client = ::accept(m_listener, nullptr, nullptr);
            connections.emplace_back([this, client] { forward(client); });
        }
    }
    for (std::thread &connection : connections) {
        connection.join();
    }
}

void MessageProxy::forward(int client)
{
    if (m_isAway) {
        ::close(client);
        return;
    }
    const int server = ServerSocket::connectTo(m_server);
    Way there{client, server, {}, true, false};
    Way back{server, client, {}, false, false};
    QDeadlineTimer end(QDeadlineTimer::Forever);
    bool isOpen = true;
    while (isOpen && !m_ends && !m_isAway && !end.hasExpired()) {
        std::array<pollfd, 2> ends{pollfd{client, POLLIN, 0}, pollfd{server, POLLIN, 0}};
        ::poll(ends.data(), ends.size(), turn);
        isOpen = (ends[0].revents == 0 || pass(&there)) && (ends[1].revents == 0 || pass(&back));
        if ((there.isLost || back.isLost) && end.isForever()) {
            end.setRemainingTime(longestSilence);
        }
    }
    ::close(server);
    ::close(client);
}

/// False when the connection is to end.
bool MessageProxy::pass(Way *way)
{
    const QByteArray bytes = ServerSocket::readSome(way->from);
    if (bytes.isEmpty()) {
        return false;
    }
    way->unread += bytes;
    while (const auto message = wholeMessage(way->unread, way->isGreeting)) {
        way->unread.remove(0, message->size());
        way->isGreeting = false;
        if (!way->isLost && !passMessage(way, *message)) {
            return false;
        }
    }
    return true;
}

bool MessageProxy::passMessage(Way *way, const QByteArray &message)
{
    if (!isNextToFail()) {
        return ServerSocket::writeAll(way->to, message);
    }
    switch (m_fault.load()) {
    case Fault::Cut:
        return false;
    case Fault::CutForLong:
        m_isAway = true;
        return false;
    case Fault::Delay:
        std::this_thread::sleep_for(delay);
        return ServerSocket::writeAll(way->to, message);
    case Fault::Freeze:
        std::this_thread::sleep_for(longestSilence);
        return false;
    case Fault::LoseWay:
        way->isLost = true;
        return true;
    }
    Q_UNREACHABLE();
}

bool MessageProxy::isNextToFail()
{
    const bool fails = ++m_messages == m_failing;
    m_hasFailed = m_hasFailed || fails;
    return fails;
}
