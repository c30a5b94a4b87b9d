#include "endpoint/EndPointIni_p.h"

#include "endpoint/Platform_p.h"
#include "endpoint/TopicPath_p.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include <algorithm>
#include <iterator>

namespace LocalCommunication {

namespace {

constexpr int mqttPort = 1883;
constexpr int mqttTlsPort = 8883;

/// Levels a broker lets through are limited to 200; two of them are the channel and the topic.
constexpr int mostPrefixLevels = 190;

struct Scheme
{
    QLatin1String name;
    BusAddress::Transport transport;
    int defaultPort;
};

const Scheme schemes[] = {
    {QLatin1String("unix"), BusAddress::Transport::UnixSocket, 0},
    {QLatin1String("mqtt"), BusAddress::Transport::Tcp, mqttPort},
    {QLatin1String("mqtts"), BusAddress::Transport::Tls, mqttTlsPort},
};

const Scheme *schemeNamed(const QString &name)
{
    for (const Scheme &scheme : schemes) {
        if (name == scheme.name) {
            return &scheme;
        }
    }
    return nullptr;
}

} // namespace

const EndPointIni::Key EndPointIni::keys[] = {
    {QLatin1String("url"), &EndPointIni::setUrl},
    {QLatin1String("allow_plain"), &EndPointIni::setAllowPlain},
    {QLatin1String("prefix"), &EndPointIni::setPrefix},
    {QLatin1String("username"), &EndPointIni::setUsername},
    {QLatin1String("password_file"), &EndPointIni::setPasswordFile},
    {QLatin1String("ca_file"), &EndPointIni::setCaFile},
    {QLatin1String("cert_file"), &EndPointIni::setCertFile},
    {QLatin1String("key_file"), &EndPointIni::setKeyFile},
};

EndPointIni::EndPointIni(const QString &path) : m_file(path), m_lines(path) {}

BusAddress EndPointIni::read()
{
    if (isUnderstood()) {
        readKeys();
        checkTogether();
    }
    return m_address;
}

/// A key that is spelt wrong would silently leave a bus without its password or its certificate.
bool EndPointIni::isUnderstood()
{
    if (!m_lines.problem().isEmpty()) {
        reject(m_lines.problem());
        return false;
    }
    for (const QString &key : m_lines.keys()) {
        const auto isKey = [&key](const Key &known) { return key == known.name; };
        if (std::none_of(std::begin(keys), std::end(keys), isKey)) {
            reject(QStringLiteral("key 'bus/%1' is unknown; the group [bus] takes url, allow_plain, prefix, "
                                  "username, password_file, ca_file, cert_file and key_file")
                       .arg(key));
            return false;
        }
    }
    return true;
}

void EndPointIni::readKeys()
{
    for (const Key &key : keys) {
        const QString value = m_lines.value(key.name);
        if (m_address.isValid() && !value.isEmpty()) {
            m_key = key.name;
            (this->*key.set)(value);
        }
    }
}

void EndPointIni::checkTogether()
{
    const bool isTls = m_address.transport == BusAddress::Transport::Tls;
    const bool isTcp = m_address.transport == BusAddress::Transport::Tcp;
    if (m_lines.value(QStringLiteral("url")).isEmpty()) {
        rejectKey(QLatin1String("url"),
                  QStringLiteral("is missing; expected for example "
                                 "url=unix:///path/to/bus.sock or url=mqtts://host:8883"));
    } else if (m_address.isPlainOverNetwork() && !m_allowsPlain) {
        rejectKey(QLatin1String("url"),
                  QStringLiteral("'%1' is not encrypted: everybody on the way can read the account and place "
                                 "orders; expected mqtts://…, or allow_plain=yes where the network is as "
                                 "safe as this machine")
                      .arg(m_address.toString()));
    } else if (m_allowsPlain && !isTcp) {
        rejectKey(QLatin1String("allow_plain"), QStringLiteral("is only for url=mqtt://…"));
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

void EndPointIni::setUrl(const QString &value)
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
        setSocketPath(url);
    } else {
        setHost(url, scheme->defaultPort);
    }
}

void EndPointIni::setSocketPath(const QUrl &url)
{
    m_address.socketPath = url.path(QUrl::FullyDecoded);
    const QString unusable = Platform::socketPathProblem(m_address.socketPath);
    if (!url.host().isEmpty() || !m_address.socketPath.startsWith(QLatin1Char('/'))) {
        reject(QStringLiteral("'%1' lacks an absolute path; expected unix:///path").arg(url.toString()));
    } else if (!unusable.isEmpty()) {
        reject(unusable);
    }
}

void EndPointIni::setHost(const QUrl &url, int defaultPort)
{
    m_address.host = url.host();
    m_address.port = url.port(defaultPort);
    if (m_address.host.isEmpty() || m_address.port <= 0 || url.path().size() > 1) {
        reject(QStringLiteral("'%1' is not of the form %2://host:port").arg(url.toString(), url.scheme()));
    }
}

void EndPointIni::setAllowPlain(const QString &value)
{
    m_allowsPlain = value == QLatin1String("yes");
    if (!m_allowsPlain) {
        reject(QStringLiteral("is '%1'; expected yes, or no such line").arg(value));
    }
}

void EndPointIni::setPrefix(const QString &value)
{
    const QList<QByteArray> levels = value.toUtf8().split('/');
    if (levels.contains(QByteArray()) || levels.size() > mostPrefixLevels) {
        reject(QStringLiteral("'%1' is not a list of at most %2 names between slashes, as in desk7/account42")
                   .arg(value)
                   .arg(mostPrefixLevels));
        return;
    }
    for (const QByteArray &level : levels) {
        m_address.prefix += encodedLevel(level) + '/';
    }
}

void EndPointIni::setPasswordFile(const QString &value)
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

/// A terminal has nobody to ask for a passphrase; the TLS library would ask at the console, and the terminal
/// would stand still until somebody answers there.
void EndPointIni::setKeyFile(const QString &value)
{
    m_address.keyFile = readableFile(value);
    QFile file(m_address.keyFile);
    if (file.open(QIODevice::ReadOnly) && file.readAll().contains("ENCRYPTED")) {
        reject(QStringLiteral(
                   "names the file '%1', which is protected by a passphrase; a key without one is needed: "
                   "openssl pkey -in '%1' -out NEWFILE")
                   .arg(m_address.keyFile));
    }
}

/// Paths are relative to the directory of the file that names them.
QString EndPointIni::readableFile(const QString &value)
{
    QString path = QDir(QFileInfo(m_file).absolutePath()).absoluteFilePath(value);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        reject(QStringLiteral("names the file '%1', which cannot be read: %2").arg(path, file.errorString()));
    }
    return path;
}

void EndPointIni::reject(const QString &why)
{
    const QString key = m_key.isEmpty() ? QString() : QStringLiteral("key 'bus/%1' ").arg(m_key);
    if (m_address.isValid()) {
        m_address.problem = QStringLiteral("%1: %2%3").arg(m_file, key, why);
    }
}

void EndPointIni::rejectKey(QLatin1String key, const QString &why)
{
    m_key = key;
    reject(why);
}

} // namespace LocalCommunication
