#include "endpoint/BusDirectory_p.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtGlobal>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace LocalCommunication::BusDirectory {

QString problemWith(const QString &path)
{
    struct stat status = {};
    if (::lstat(QFile::encodeName(path).constData(), &status) != 0) {
        return QStringLiteral("the bus directory '%1': %2").arg(path, qt_error_string(errno));
    }
    if (!S_ISDIR(status.st_mode)) {
        return QStringLiteral("'%1' is not a directory itself (a link is not accepted); remove it").arg(path);
    }
    if (status.st_uid != ::geteuid()) {
        return QStringLiteral("the bus directory '%1' belongs to another user; remove it").arg(path);
    }
    if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        return QStringLiteral("the bus directory '%1' is open to other users; run: chmod 700 '%1'").arg(path);
    }
    return QString();
}

QString make(const QString &path)
{
    QDir().mkpath(QFileInfo(path).path());
    ::mkdir(QFile::encodeName(path).constData(), S_IRWXU); // whatever is there instead is found below
    return problemWith(path);
}

} // namespace LocalCommunication::BusDirectory
