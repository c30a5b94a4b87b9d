#include "terminal/practice/PracticeLock.h"

#include <QCoreApplication>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("PracticeLock", source);
}

} // namespace

PracticeLock::PracticeLock(const PracticeSession &session)
    : m_name(session.name),
      m_path(session.lockFile()),
      m_file(m_path)
{
    m_file.setStaleLockTime(0); // a long practice is not an old one: only a dead process frees it
}

bool PracticeLock::acquire()
{
    m_problem.clear();
    if (m_file.isLocked() || m_file.tryLock(0)) {
        return true;
    }
    qint64 process = 0;
    QString host;
    QString program;
    if (m_file.error() == QLockFile::LockFailedError && m_file.getLockInfo(&process, &host, &program)) {
        m_problem = text("The practice \"%1\" is open in another window (process %2). Close that one first.")
                        .arg(m_name)
                        .arg(process);
    } else {
        m_problem = text("The practice \"%1\" cannot be opened: %2 cannot be written.").arg(m_name, m_path);
    }
    return false;
}

} // namespace Terminal
