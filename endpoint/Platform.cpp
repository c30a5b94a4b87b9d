#include "endpoint/Platform_p.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#ifdef Q_OS_LINUX
#    include <sys/prctl.h>
#else
#    include <sys/event.h>
#endif

namespace LocalCommunication::Platform {

namespace {

/// A local socket without a name whose other end has none either.
bool isEndOfPair(int descriptor)
{
    sockaddr_un own{};
    sockaddr_un peer{};
    socklen_t ownSize = sizeof own;
    socklen_t peerSize = sizeof peer;
    return ::getsockname(descriptor, reinterpret_cast<sockaddr *>(&own), &ownSize) == 0 &&
           ::getpeername(descriptor, reinterpret_cast<sockaddr *>(&peer), &peerSize) == 0 &&
           own.sun_family == AF_UNIX && own.sun_path[0] == '\0' && peer.sun_path[0] == '\0';
}

} // namespace

QString socketPathProblem(const QString &path)
{
    constexpr int limit = sizeof(sockaddr_un::sun_path) - 1;
    const int length = QFile::encodeName(path).size();
    if (length <= limit) {
        return QString();
    }
    return QStringLiteral("the socket path '%1' has %2 bytes, but this system allows only %3; "
                          "choose a shorter directory (XDG_RUNTIME_DIR, or url=unix://… in endpoint.ini)")
        .arg(path)
        .arg(length)
        .arg(limit);
}

int bytesToRead(int descriptor)
{
    int count = 0;
    return ::ioctl(descriptor, FIONREAD, &count) == 0 ? count : 0;
}

QString connectionProblem(int descriptor)
{
    int error = 0;
    socklen_t size = sizeof error;
    ::getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &error, &size);
    if (error != 0) {
        return qt_error_string(error);
    }
    sockaddr_storage peer{};
    socklen_t peerSize = sizeof peer;
    const bool isConnected = ::getpeername(descriptor, reinterpret_cast<sockaddr *>(&peer), &peerSize) == 0;
    return isConnected ? QString() : QStringLiteral("nobody takes connections there");
}

void closeOnExec(int descriptor)
{
    ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
}

SocketPairGuard::SocketPairGuard() : m_lowest(::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0))
{
    ::close(m_lowest);
}

/// New descriptors are the lowest free ones. The few that are looked at leave room for those of other
/// threads.
SocketPairGuard::~SocketPairGuard()
{
    constexpr int mostLookedAt = 16;
    for (int descriptor = m_lowest; descriptor < m_lowest + mostLookedAt; ++descriptor) {
        if (isEndOfPair(descriptor)) {
            closeOnExec(descriptor);
        }
    }
}

void closeDescriptorsBut(int kept)
{
    constexpr rlim_t mostEverOpen = 65536; // where the system sets no limit
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    const int end = static_cast<int>(std::min(limit.rlim_cur, mostEverOpen));
    for (int descriptor = 0; descriptor < end; ++descriptor) {
        if (descriptor != kept) {
            ::close(descriptor);
        }
    }
}

#ifdef Q_OS_LINUX

const int mostTriesInCrowd = 500;

bool isCrowded(int error)
{
    return error == EAGAIN;
}

/// Without the variable Qt would take a directory in /tmp, and whoever makes that one first keeps its user
/// off the bus.
QString runtimeDirectory()
{
    if (!qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) {
        return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    }
    const QString usual = QStringLiteral("/run/user/%1").arg(::geteuid());
    return QFileInfo(usual).isDir() ? usual
                                    : QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
}

std::optional<uid_t> peerUser(int descriptor)
{
    ucred credentials{};
    socklen_t size = sizeof credentials;
    if (::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &credentials, &size) != 0) {
        return std::nullopt;
    }
    return credentials.uid;
}

// By SIGKILL: a program that is just starting may overwrite what a politer signal told it.
void endWithParent(pid_t parent)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) {
        ::_exit(EXIT_FAILURE); // it ended before the line above
    }
}

#else

const int mostTriesInCrowd = 20; // the same error tells that nobody listens

/// A queue of callers that is full refuses, as a socket without anybody behind it does.
bool isCrowded(int error)
{
    return error == EAGAIN || error == ECONNREFUSED;
}

QString runtimeDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
}

std::optional<uid_t> peerUser(int descriptor)
{
    uid_t user = 0;
    gid_t group = 0;
    if (::getpeereid(descriptor, &user, &group) != 0) {
        return std::nullopt;
    }
    return user;
}

/// Without a death signal a small helper process waits for the end of either of the two.
void endWithParent(pid_t parent)
{
    const pid_t child = ::getpid();
    if (::fork() != 0) {
        return;
    }
    const int queue = ::kqueue();
    closeDescriptorsBut(queue);
    struct kevent watches[2];
    EV_SET(&watches[0], static_cast<uintptr_t>(parent), EVFILT_PROC, EV_ADD, NOTE_EXIT, 0, nullptr);
    EV_SET(&watches[1], static_cast<uintptr_t>(child), EVFILT_PROC, EV_ADD, NOTE_EXIT, 0, nullptr);
    struct kevent end;
    const bool watching = ::kevent(queue, watches, 2, nullptr, 0, nullptr) == 0;
    if (!watching ||
        (::kevent(queue, nullptr, 0, &end, 1, nullptr) == 1 && end.ident == static_cast<uintptr_t>(parent))) {
        ::kill(child, SIGKILL);
    }
    ::_exit(EXIT_SUCCESS);
}

#endif

} // namespace LocalCommunication::Platform
