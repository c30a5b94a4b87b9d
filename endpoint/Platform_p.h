#pragma once

#include <QString>

#include <optional>
#include <sys/types.h>

/// What Linux and macOS do differently. Nothing else in this folder depends on the system.
namespace LocalCommunication::Platform {

/// Where the sockets of this user's programs are; empty when there is no such directory.
QString runtimeDirectory();

/// Empty, or why a Unix socket cannot have this path: the system's limit is about 100 bytes.
QString socketPathProblem(const QString &path);

/// True when a connection to a local socket failed because too many callers wait there at this instant.
bool isCrowded(int error);

/// How often to try again then, once in a millisecond, before the broker counts as one that hangs.
extern const int mostTriesInCrowd;

/// Who runs the process at the other end of a connected Unix socket.
std::optional<uid_t> peerUser(int descriptor);

/// Bytes that wait to be read from a socket.
int bytesToRead(int descriptor);

/// Empty while a TCP socket is connected; else why it is not. For a socket that has become readable or
/// writable, not for one that is still on its way.
QString connectionProblem(int descriptor);

/// Programs started by this process do not inherit the descriptor.
void closeOnExec(int descriptor);

/// Marks the pairs of sockets that a library opens during the life of this object: programs started by this
/// process do not inherit them.
class SocketPairGuard
{
public:
    SocketPairGuard();
    ~SocketPairGuard();
    Q_DISABLE_COPY_MOVE(SocketPairGuard)

private:
    int m_lowest; // the lowest descriptor that was free
};

/// For a helper that is forked beside a program: what it inherited would keep pipes open that others wait to
/// see closed, such as the one that tells that the program runs. -1 keeps none.
void closeDescriptorsBut(int kept);

/// Called in a child between fork and exec: the child is killed when the process `parent` ends.
void endWithParent(pid_t parent);

} // namespace LocalCommunication::Platform
