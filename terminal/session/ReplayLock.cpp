#include "terminal/session/ReplayLock.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QLockFile>
#include <QStandardPaths>

#include <chrono>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("ReplayLock", source);
}

QString lockPath(const QString &account)
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty()) {
        folder = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
    }
    const QByteArray name = QCryptographicHash::hash(account.toUtf8(), QCryptographicHash::Sha256).toHex();
    return QDir(folder).filePath(
        QStringLiteral("tradechart-replay-%1.lock").arg(QString::fromLatin1(name.left(16))));
}

} // namespace

ReplayLock::ReplayLock(const QString &account) : m_path(lockPath(account))
{
    if (!account.isEmpty()) {
        m_file = std::make_unique<QLockFile>(m_path);
        m_file->setStaleLockTime(0); // a long replay is not an old one: only a dead process frees it
    }
}

ReplayLock::~ReplayLock() = default;

bool ReplayLock::acquire()
{
    m_problem.clear();
    if (!m_file || m_file->isLocked() || m_file->tryLock(0)) {
        return true;
    }
    qint64 process = 0;
    QString host;
    QString program;
    if (m_file->error() == QLockFile::LockFailedError && m_file->getLockInfo(&process, &host, &program)) {
        m_problem = text("This account is replayed in another window (process %1). End that replay first.")
                        .arg(process);
    } else {
        m_problem = text("The replay cannot be locked: %1 cannot be written.").arg(m_path);
    }
    return false;
}

void ReplayLock::release()
{
    if (m_file) {
        m_file->unlock();
    }
}

} // namespace Terminal
