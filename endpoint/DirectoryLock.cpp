#include "endpoint/DirectoryLock_p.h"

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace LocalCommunication {

bool DirectoryLock::tryAcquire(const QString &path)
{
    if (isHeld()) {
        return true;
    }
    m_descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (m_descriptor >= 0 && ::flock(m_descriptor, LOCK_EX | LOCK_NB) != 0) {
        release();
    }
    return isHeld();
}

void DirectoryLock::release()
{
    if (isHeld()) {
        ::close(m_descriptor);
        m_descriptor = -1;
    }
}

void DirectoryLock::handDown() const
{
    ::fcntl(m_descriptor, F_SETFD, 0);
}

} // namespace LocalCommunication
