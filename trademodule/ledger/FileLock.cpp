#include "trademodule/ledger/FileLock.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
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

bool FileLock::tryTake(const QString &record)
{
    if (::flock(m_descriptor, LOCK_EX | LOCK_NB) != 0) {
        return false;
    }
    const QByteArray line = record.toUtf8();
    // the record only tells others who has the lock: without it, it holds as well
    [[maybe_unused]] const bool isWritten =
        ::ftruncate(m_descriptor, 0) == 0 &&
        ::pwrite(m_descriptor, line.constData(), static_cast<std::size_t>(line.size()), 0) == line.size();
    return true;
}

QString FileLock::ownersRecord()
{
    std::array<char, 512> line{};
    const ssize_t size = ::pread(m_descriptor, line.data(), line.size(), 0);
    return size > 0 ? QString::fromUtf8(line.data(), static_cast<int>(size)) : QString();
}

} // namespace TradeModule
