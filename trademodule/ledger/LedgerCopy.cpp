#include "trademodule/ledger/LedgerCopy.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h> // permissions of a new file: POSIX, the same on Linux and macOS

namespace TradeModule {

namespace {

/// False when there is such a file already.
bool makeFile(const QString &path)
{
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor >= 0) {
        ::close(descriptor);
    } else if (errno != EEXIST) {
        throw LedgerError(
            translated("%1: cannot be opened: %2").arg(path, QString::fromLocal8Bit(std::strerror(errno))));
    }
    return descriptor >= 0;
}

QString newFile(const QString &path)
{
    QString name = path;
    for (int number = 2; !makeFile(name); ++number) {
        name = QStringLiteral("%1.%2").arg(path).arg(number);
    }
    return name;
}

} // namespace

QString copyAside(Database *database, int version)
{
    if (database->kind() != Database::Kind::Sqlite || !Database::keeps(database->location())) {
        return {};
    }
    const QString ledger = QFileInfo(database->location()).canonicalFilePath();
    QString copy = newFile(QStringLiteral("%1.version-%2").arg(ledger).arg(version));
    try {
        database->run(QStringLiteral("VACUUM INTO '%1'")
                          .arg(QString(copy).replace(QLatin1Char('\''), QLatin1String("''"))));
    } catch (const LedgerError &error) {
        QFile::remove(copy);
        throw LedgerUnavailable(error.reason()); // the file was made for it: whatever fails is its disk
    }
    return copy;
}

} // namespace TradeModule
