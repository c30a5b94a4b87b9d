#include "trademodule/cli/ServiceManager.h"

#include <QByteArray>

#include <algorithm>
#include <cstddef>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace TradeModule {

ServiceManager::ServiceManager() : m_address(qgetenv("NOTIFY_SOCKET")) {}

void ServiceManager::tellReady(const QString &state) const
{
    QString line = state;
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    tell("READY=1\nSTATUS=" + line.toUtf8());
}

void ServiceManager::tellAlive() const
{
    tell("WATCHDOG=1");
}

void ServiceManager::tellEnding() const
{
    tell("STOPPING=1");
}

/// A word that is lost is no failure of the service: the manager sees for itself when it ends.
void ServiceManager::tell(const QByteArray &lines) const
{
    sockaddr_un address{};
    const auto length = static_cast<std::size_t>(m_address.size());
    if (length < 2 || length >= sizeof(address.sun_path)) {
        return;
    }
    address.sun_family = AF_UNIX;
    std::copy(m_address.begin(), m_address.end(), address.sun_path);
    if (address.sun_path[0] == '@') { // a name that is in no folder
        address.sun_path[0] = '\0';
    }
    const int socket = ::socket(AF_UNIX, SOCK_DGRAM, 0);
    if (socket < 0) {
        return;
    }
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + length);
    ::sendto(socket, lines.constData(), static_cast<std::size_t>(lines.size()), MSG_DONTWAIT,
             reinterpret_cast<const sockaddr *>(&address), size);
    ::close(socket);
}

} // namespace TradeModule
