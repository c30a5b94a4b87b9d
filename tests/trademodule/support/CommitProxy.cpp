#include "tests/trademodule/support/CommitProxy.h"

#include "tests/trademodule/support/ServerSocket.h"

#include <QByteArray>

#include <array>
#include <vector>

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

CommitProxy::CommitProxy(const QString &server)
    : m_server(server),
      m_listener(ServerSocket::listenIn(m_directory.path())),
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
    const int server = ServerSocket::connectTo(m_server);
    std::array<pollfd, 2> ends{pollfd{client, POLLIN, 0}, pollfd{server, POLLIN, 0}};
    bool losesAnswer = false;
    while (!m_ends) {
        ::poll(ends.data(), ends.size(), 20);
        if (ends[0].revents != 0) {
            const QByteArray bytes = ServerSocket::readSome(client);
            const bool isCommit = bytes.contains("COMMIT");
            const Fault fault = isCommit ? m_fault.exchange(Fault::None) : Fault::None;
            losesAnswer = fault == Fault::LoseAnswer;
            if (bytes.isEmpty() || fault == Fault::LoseQuestion || !ServerSocket::writeAll(server, bytes)) {
                break;
            }
        }
        if (ends[1].revents != 0) {
            const QByteArray bytes = ServerSocket::readSome(server);
            if (bytes.isEmpty() || losesAnswer || !ServerSocket::writeAll(client, bytes)) {
                break;
            }
        }
    }
    ::close(server);
    ::close(client);
}
