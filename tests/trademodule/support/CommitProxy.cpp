#include "tests/trademodule/support/CommitProxy.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QFile>

#include <array>
#include <cstring>
#include <vector>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

sockaddr_un addressIn(const QString &directory)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray path = QFile::encodeName(directory + QStringLiteral("/.s.PGSQL.5432"));
    std::strncpy(address.sun_path, path.constData(), sizeof address.sun_path - 1);
    return address;
}

int listenIn(const QString &directory)
{
    const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const sockaddr_un address = addressIn(directory);
    EXPECT_EQ(::bind(listener, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    EXPECT_EQ(::listen(listener, 8), 0);
    return listener;
}

int connectTo(const QString &directory)
{
    const int connection = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const sockaddr_un address = addressIn(directory);
    EXPECT_EQ(::connect(connection, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    return connection;
}

/// What can be read now; empty at the end.
QByteArray readSome(int from)
{
    std::array<char, 65536> buffer{};
    const ssize_t size = ::read(from, buffer.data(), buffer.size());
    return size > 0 ? QByteArray(buffer.data(), static_cast<int>(size)) : QByteArray();
}

bool writeAll(int to, const QByteArray &bytes)
{
    return ::send(to, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL) ==
           bytes.size();
}

} // namespace

CommitProxy::CommitProxy(const QString &server)
    : m_server(server),
      m_listener(listenIn(m_directory.path())),
      m_thread([this] { serve(); })
{
}

CommitProxy::~CommitProxy()
{
    m_ends = true;
    m_thread.join();
    ::close(m_listener);
}

void CommitProxy::serve()
{
    std::vector<std::thread> connections;
    while (!m_ends) {
        pollfd waiting{m_listener, POLLIN, 0};
        if (::poll(&waiting, 1, 20) > 0) {
            const int client = ::accept(m_listener, nullptr, nullptr);
            connections.emplace_back([this, client] { forward(client); });
        }
    }
    for (std::thread &connection : connections) {
        connection.join();
    }
}

void CommitProxy::forward(int client) const
{
    if (m_isAway) {
        ::close(client);
        return;
    }
    const int server = connectTo(m_server);
    std::array<pollfd, 2> ends{pollfd{client, POLLIN, 0}, pollfd{server, POLLIN, 0}};
    bool losesAnswer = false;
    while (!m_ends) {
        ::poll(ends.data(), ends.size(), 20);
        if (ends[0].revents != 0) {
            const QByteArray bytes = readSome(client);
            const bool isCommit = bytes.contains("COMMIT");
            const Fault fault = isCommit ? m_fault.exchange(Fault::None) : Fault::None;
            losesAnswer = fault == Fault::LoseAnswer;
            if (bytes.isEmpty() || fault == Fault::LoseQuestion || !writeAll(server, bytes)) {
                break;
            }
        }
        if (ends[1].revents != 0) {
            const QByteArray bytes = readSome(server);
            if (bytes.isEmpty() || losesAnswer || !writeAll(client, bytes)) {
                break;
            }
        }
    }
    ::close(server);
    ::close(client);
}
