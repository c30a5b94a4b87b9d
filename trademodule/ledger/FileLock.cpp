#include "trademodule/ledger/FileLock.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/ledger/ProcessIdentity.h"

#include <QFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h> // file locks: the same on Linux and macOS

namespace TradeModule {

namespace {

/// Not inherited by other programs: they would keep the lock after this process has ended.
int openFile(const QString &path)
{
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_CREAT | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor < 0) {
        throw LedgerError(
            translated("%1: cannot be opened: %2").arg(path, QString::fromLocal8Bit(std::strerror(errno))));
    }
    return descriptor;
}

} // namespace

FileLock::FileLock(const QString &path) : m_descriptor(openFile(path)) {}

FileLock::~FileLock()
{
    ::close(m_descriptor);
}

bool FileLock::tryTake()
{
    if (::flock(m_descriptor, LOCK_EX | LOCK_NB) != 0) {
        return false;
    }
    beat();
    return true;
}

void FileLock::beat()
{
    ::futimens(m_descriptor, nullptr);
}

QString FileLock::signOfLife()
{
    struct stat status
    {
    };
    if (::fstat(m_descriptor, &status) != 0) {
        return {};
    }
#ifdef Q_OS_MACOS
    const timespec time = status.st_mtimespec;
#else
    const timespec time = status.st_mtim;
#endif
    return QStringLiteral("%1.%2").arg(time.tv_sec).arg(time.tv_nsec);
}

void FileLock::endOwner(const ProcessIdentity &owner, const QString &sign)
{
    const bool isStill = signOfLife() == sign;
    setHindrance(
        !isStill || owner.end()
            ? QString()
            : translated("process %1 on %2 gives no sign of life and cannot be ended from here: end it "
                         "there")
                  .arg(QString::number(owner.number), owner.host));
}

} // namespace TradeModule
