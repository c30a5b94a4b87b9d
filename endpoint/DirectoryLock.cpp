#include "endpoint/DirectoryLock_p.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace LocalCommunication {

DirectoryLock::Result DirectoryLock::tryAcquire(const QString &path)
{
    if (m_descriptor >= 0) {
        return Result::Held;
    }
    m_descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (m_descriptor < 0) {
        return giveUp(path, errno);
    }
    return ::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0 ? Result::Held : giveUp(path, errno);
}

DirectoryLock::Result DirectoryLock::giveUp(const QString &path, int error)
{
    release();
    if (error == EWOULDBLOCK) {
        return Result::ByOther;
    }
    m_problem =
        QStringLiteral("the lock file '%1' cannot be used: %2; remove it").arg(path, qt_error_string(error));
    return Result::Unusable;
}

void DirectoryLock::release()
{
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
        m_descriptor = -1;
    }
}

void DirectoryLock::handDown() const
{
    ::fcntl(m_descriptor, F_SETFD, 0);
}

} // namespace LocalCommunication
