#include "trademodule/ledger/FileState.h"

#include <QFile>

#include <sys/stat.h>

namespace TradeModule {

namespace {

qint64 nanosecondsOf(const timespec &time)
{
    return static_cast<qint64>(time.tv_sec) * 1000000000 + time.tv_nsec;
}

/// Of contents, name or rights: unlike that of the contents alone nobody can set it back.
timespec changeOf(const struct stat &status)
{
#ifdef Q_OS_MACOS
    return status.st_ctimespec;
#else
    return status.st_ctim;
#endif
}

} // namespace

FileState FileState::of(const QString &path)
{
    struct stat status
    {
    };
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        return {};
    }
    return {FileIdentity::of(path), static_cast<qint64>(status.st_size), nanosecondsOf(changeOf(status))};
}

} // namespace TradeModule
