#include "endpoint/BusAddress.h"

#include "endpoint/EndPointIni_p.h"
#include "endpoint/Platform_p.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace LocalCommunication {

namespace {

BusAddress invalidAddress(const QString &problem)
{
    BusAddress address;
    address.problem = problem;
    return address;
}

BusAddress embeddedAddress(const QString &canonicalDirectory)
{
    const QByteArray digest =
        QCryptographicHash::hash(QFile::encodeName(canonicalDirectory), QCryptographicHash::Sha256).toHex();
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (runtime.isEmpty()) {
        return invalidAddress(
            QStringLiteral("There is no runtime directory for the bus; XDG_RUNTIME_DIR must name "
                           "a directory that only its owner may enter"));
    }
    BusAddress address;
    address.isEmbedded = true;
    address.socketPath =
        QStringLiteral("%1/tradebus-%2/bus.sock").arg(runtime, QString::fromLatin1(digest.left(16)));
    address.problem = Platform::socketPathProblem(address.socketPath);
    return address;
}

} // namespace

BusAddress BusAddress::ofDirectory(const QString &directory)
{
    const QFileInfo info(directory);
    if (directory.isEmpty() || !info.isDir()) {
        return invalidAddress(
            QStringLiteral(
                "The bus address '%1' is not a directory; it is the directory of the terminal's program")
                .arg(directory));
    }
    const QString canonical = info.canonicalFilePath();
    const QFileInfo ini(QDir(canonical).filePath(QStringLiteral("endpoint.ini")));
    if (ini.exists() || ini.isSymLink()) {
        return EndPointIni(ini.filePath()).read();
    }
    return embeddedAddress(canonical);
}

QString BusAddress::toString() const
{
    switch (transport) {
    case Transport::UnixSocket:
        return QStringLiteral("unix://") + socketPath;
    case Transport::Tcp:
        return QStringLiteral("mqtt://%1:%2").arg(host).arg(port);
    case Transport::Tls:
        return QStringLiteral("mqtts://%1:%2").arg(host).arg(port);
    }
    return QString();
}

} // namespace LocalCommunication
