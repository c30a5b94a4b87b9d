#include "endpoint/BusAddress.h"

#include "endpoint/EndPointIni_p.h"
#include "endpoint/Platform_p.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHostAddress>
#include <QStandardPaths>

#include <optional>

namespace LocalCommunication {

namespace {

BusAddress invalidAddress(const QString &problem)
{
    BusAddress address;
    address.problem = problem;
    return address;
}

/// The first half of the digest, which is long enough to keep buses apart.
QString digestOf(const QByteArray &name)
{
    constexpr int digits = 16;
    const QByteArray digest = QCryptographicHash::hash(name, QCryptographicHash::Sha256).toHex();
    return QString::fromLatin1(digest.left(digits));
}

/// Several buses of one directory, one for each account say, are told apart by the environment.
QByteArray busName(const QString &canonicalDirectory)
{
    const QByteArray directory = QFile::encodeName(canonicalDirectory);
    const QByteArray instance = qgetenv("TRADEBUS_INSTANCE");
    return instance.isEmpty() ? directory : directory + '\0' + instance;
}

BusAddress embeddedAddress(const QString &canonicalDirectory)
{
    const QString runtime = Platform::runtimeDirectory();
    if (runtime.isEmpty()) {
        return invalidAddress(
            QStringLiteral("There is no runtime directory for the bus; XDG_RUNTIME_DIR must name "
                           "a directory that only its owner may enter"));
    }
    BusAddress address;
    address.isEmbedded = true;
    address.socketPath =
        QStringLiteral("%1/tradebus-%2/bus.sock").arg(runtime, digestOf(busName(canonicalDirectory)));
    address.problem = Platform::socketPathProblem(address.socketPath);
    return address;
}

/// One that is there, even if it cannot be read: it must not be passed over for another bus.
std::optional<QString> settingsIn(const QDir &directory)
{
    const QFileInfo ini(directory.filePath(QStringLiteral("endpoint.ini")));
    return ini.exists() || ini.isSymLink() ? std::optional<QString>(ini.filePath()) : std::nullopt;
}

/// The user's own come first: several accounts may run the terminal of one directory, which is not theirs to
/// write to.
std::optional<QString> settingsFor(const QString &canonicalDirectory)
{
    const QDir users(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    const QString own = QStringLiteral("tradebus-") + digestOf(QFile::encodeName(canonicalDirectory));
    const std::optional<QString> ofUser = settingsIn(users.filePath(own));
    return ofUser ? ofUser : settingsIn(canonicalDirectory);
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
    const std::optional<QString> settings = settingsFor(canonical);
    return settings ? EndPointIni(*settings).read() : embeddedAddress(canonical);
}

bool BusAddress::isPlainOverNetwork() const
{
    const bool isThisMachine = host == QLatin1String("localhost") || QHostAddress(host).isLoopback();
    return transport == Transport::Tcp && !isThisMachine;
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
