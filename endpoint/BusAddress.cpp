#include "endpoint/BusAddress.h"

#include "endpoint/Platform_p.h"
#include "endpoint/TopicPath_p.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QUrl>

#include <algorithm>
#include <iterator>

namespace LocalCommunication {

namespace {

constexpr int MqttPort = 1883;
constexpr int MqttTlsPort = 8883;

/// Levels a broker lets through are limited to 200; two of them are the channel and the topic.
constexpr int MaxPrefixLevels = 190;

struct Scheme
{
    QLatin1String name;
    BusAddress::Transport transport;
    int defaultPort;
};

const Scheme Schemes[] = {
    {QLatin1String("unix"), BusAddress::Transport::UnixSocket, 0},
    {QLatin1String("mqtt"), BusAddress::Transport::Tcp, MqttPort},
    {QLatin1String("mqtts"), BusAddress::Transport::Tls, MqttTlsPort},
};

const Scheme *schemeNamed(const QString &name)
{
    for (const Scheme &scheme : Schemes) {
        if (name == scheme.name) {
            return &scheme;
        }
    }
    return nullptr;
}

/// The reader of one endpoint.ini. It stops at the first thing wrong.
class IniReader
{
public:
    explicit IniReader(const QString &path) : m_file(path), m_settings(path, QSettings::IniFormat)
    {
        m_settings.setIniCodec("UTF-8");
    }

    BusAddress read();

private:
    using Setter = void (IniReader::*)(const QString &value);
    struct Key
    {
        QLatin1String name;
        Setter set;
    };
    static const Key Keys[];

    bool isReadable();
    bool hasOnlyKnownKeys();
    void readKeys();
    void checkTogether();

    void setUrl(const QString &value);
    void setPrefix(const QString &value);
    void setUsername(const QString &value) { m_address.username = value.toUtf8(); }
    void setPasswordFile(const QString &value);
    void setCaFile(const QString &value) { m_address.caFile = readableFile(value); }
    void setCertFile(const QString &value) { m_address.certFile = readableFile(value); }
    void setKeyFile(const QString &value) { m_address.keyFile = readableFile(value); }

    QString readableFile(const QString &value);
    QString text(const QString &key) const;
    void reject(const QString &why);
    void rejectKey(QLatin1String key, const QString &why);

    const QString m_file;
    QSettings m_settings;
    QLatin1String m_key;
    BusAddress m_address;
};

const IniReader::Key IniReader::Keys[] = {
    {QLatin1String("url"), &IniReader::setUrl},
    {QLatin1String("prefix"), &IniReader::setPrefix},
    {QLatin1String("username"), &IniReader::setUsername},
    {QLatin1String("password_file"), &IniReader::setPasswordFile},
    {QLatin1String("ca_file"), &IniReader::setCaFile},
    {QLatin1String("cert_file"), &IniReader::setCertFile},
    {QLatin1String("key_file"), &IniReader::setKeyFile},
};

BusAddress IniReader::read()
{
    if (isReadable() && hasOnlyKnownKeys()) {
        readKeys();
        checkTogether();
    }
    return m_address;
}

bool IniReader::isReadable()
{
    QFile file(m_file);
    if (!file.open(QIODevice::ReadOnly)) {
        reject(QStringLiteral("cannot be read: %1").arg(file.errorString()));
    }
    return m_address.isValid();
}

/// A key that is spelt wrong would silently leave a bus without its password or its certificate.
bool IniReader::hasOnlyKnownKeys()
{
    const QStringList present = m_settings.allKeys(); // reads the whole file: its status holds from here on
    if (m_settings.status() != QSettings::NoError) {
        reject(QStringLiteral("is not an INI file; expected a group [bus] with a line url=…"));
        return false;
    }
    for (const QString &key : present) {
        const auto isKey = [&key](const Key &known) { return key == QLatin1String("bus/") + known.name; };
        if (std::none_of(std::begin(Keys), std::end(Keys), isKey)) {
            reject(QStringLiteral("key '%1' is unknown; the group [bus] takes url, prefix, username, "
                                  "password_file, ca_file, cert_file and key_file")
                       .arg(key));
            return false;
        }
    }
    return true;
}

void IniReader::readKeys()
{
    for (const Key &key : Keys) {
        const QString value = text(key.name);
        if (m_address.isValid() && !value.isEmpty()) {
            m_key = key.name;
            (this->*key.set)(value);
        }
    }
}

void IniReader::checkTogether()
{
    const bool isTls = m_address.transport == BusAddress::Transport::Tls;
    if (text(QStringLiteral("url")).isEmpty()) {
        rejectKey(QLatin1String("url"),
                  QStringLiteral("is missing; expected for example "
                                 "url=unix:///path/to/bus.sock or url=mqtts://host:8883"));
    } else if (!m_address.password.isEmpty() && m_address.username.isEmpty()) {
        rejectKey(QLatin1String("username"), QStringLiteral("is missing, but password_file is given"));
    } else if (m_address.certFile.isEmpty() != m_address.keyFile.isEmpty()) {
        rejectKey(m_address.keyFile.isEmpty() ? QLatin1String("key_file") : QLatin1String("cert_file"),
                  QStringLiteral("is missing; cert_file and key_file belong together"));
    } else if (!m_address.certFile.isEmpty() && m_address.caFile.isEmpty()) {
        rejectKey(QLatin1String("ca_file"), QStringLiteral("is missing; cert_file needs it"));
    } else if (!isTls && !m_address.caFile.isEmpty()) {
        rejectKey(QLatin1String("ca_file"), QStringLiteral("is only for url=mqtts://…"));
    }
}

void IniReader::setUrl(const QString &value)
{
    const QUrl url(value, QUrl::StrictMode);
    const Scheme *scheme = schemeNamed(url.scheme());
    if (!url.isValid() || !scheme) {
        reject(QStringLiteral("'%1' is not understood; expected unix:///path, mqtt://host:port or "
                              "mqtts://host:port")
                   .arg(url.isValid() ? url.toDisplayString() : value));
        return;
    }
    m_address.transport = scheme->transport;
    if (url.hasQuery() || url.hasFragment() || !url.userInfo().isEmpty()) {
        reject(QStringLiteral("'%1' has more than a host and a port or a path; user and password belong into "
                              "username and password_file")
                   .arg(url.toDisplayString()));
    } else if (scheme->transport == BusAddress::Transport::UnixSocket) {
        m_address.socketPath = url.path(QUrl::FullyDecoded);
        if (!url.host().isEmpty() || !m_address.socketPath.startsWith(QLatin1Char('/'))) {
            reject(QStringLiteral("'%1' lacks an absolute path; expected unix:///path").arg(value));
        } else if (const QString problem = Platform::socketPathProblem(m_address.socketPath);
                   !problem.isEmpty()) {
            reject(problem);
        }
    } else {
        m_address.host = url.host();
        m_address.port = url.port(scheme->defaultPort);
        if (m_address.host.isEmpty() || m_address.port <= 0 || url.path().size() > 1) {
            reject(QStringLiteral("'%1' is not of the form %2://host:port").arg(value, scheme->name));
        }
    }
}

void IniReader::setPrefix(const QString &value)
{
    const QList<QByteArray> levels = value.toUtf8().split('/');
    if (levels.contains(QByteArray()) || levels.size() > MaxPrefixLevels) {
        reject(QStringLiteral("'%1' is not a list of at most %2 names between slashes, as in desk7/account42")
                   .arg(value)
                   .arg(MaxPrefixLevels));
        return;
    }
    for (const QByteArray &level : levels) {
        m_address.prefix += encodedLevel(level) + '/';
    }
}

void IniReader::setPasswordFile(const QString &value)
{
    QFile file(readableFile(value));
    if (!m_address.isValid() || !file.open(QIODevice::ReadOnly)) {
        return;
    }
    m_address.password = file.readLine();
    while (m_address.password.endsWith('\n') || m_address.password.endsWith('\r')) {
        m_address.password.chop(1);
    }
    if (m_address.password.isEmpty()) {
        reject(
            QStringLiteral("names the file '%1', whose first line holds no password").arg(file.fileName()));
    }
}

/// Paths are relative to the directory of the file that names them.
QString IniReader::readableFile(const QString &value)
{
    QString path = QDir(QFileInfo(m_file).absolutePath()).absoluteFilePath(value);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        reject(QStringLiteral("names the file '%1', which cannot be read: %2").arg(path, file.errorString()));
    }
    return path;
}

/// QSettings takes a comma for a list.
QString IniReader::text(const QString &key) const
{
    return m_settings.value(QLatin1String("bus/") + key).toStringList().join(QLatin1Char(','));
}

void IniReader::reject(const QString &why)
{
    const QString key = m_key.isEmpty() ? QString() : QStringLiteral("key 'bus/%1' ").arg(m_key);
    if (m_address.isValid()) {
        m_address.problem = QStringLiteral("%1: %2%3").arg(m_file, key, why);
    }
}

void IniReader::rejectKey(QLatin1String key, const QString &why)
{
    m_key = key;
    reject(why);
}

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
        return IniReader(ini.filePath()).read();
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
