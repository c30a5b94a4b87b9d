#include "tests/trademodule/support/ServerSocket.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QUrl>
#include <QUrlQuery>

#include <array>
#include <cstring>

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

} // namespace

QString ServerSocket::directoryOf(const QString &location)
{
    return QUrlQuery(QUrl(location)).queryItemValue(QStringLiteral("host"));
}

int ServerSocket::listenIn(const QString &directory)
{
    const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const sockaddr_un address = addressIn(directory);
    EXPECT_EQ(::bind(listener, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    EXPECT_EQ(::listen(listener, 8), 0);
    return listener;
}

int ServerSocket::connectTo(const QString &directory)
{
    const int connection = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const sockaddr_un address = addressIn(directory);
    EXPECT_EQ(::connect(connection, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    return connection;
}

QByteArray ServerSocket::readSome(int from)
{
    std::array<char, 65536> buffer{};
    const ssize_t size = ::read(from, buffer.data(), buffer.size());
    return size > 0 ? QByteArray(buffer.data(), static_cast<int>(size)) : QByteArray();
}

bool ServerSocket::writeAll(int to, const QByteArray &bytes)
{
    return ::send(to, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL) ==
           bytes.size();
}
