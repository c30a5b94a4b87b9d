#pragma once

#include "endpoint/BusAddress.h"
#include "endpoint/BusGroup_p.h"

#include <QLatin1String>
#include <QString>

class QUrl;

namespace LocalCommunication {

/// The reader of one endpoint.ini. It stops at the first thing wrong.
class EndPointIni
{
public:
    explicit EndPointIni(const QString &path);

    BusAddress read();

private:
    using Setter = void (EndPointIni::*)(const QString &value);
    struct Key
    {
        QLatin1String name;
        Setter set;
    };
    static const Key keys[];

    bool isUnderstood();
    void readKeys();
    void checkTogether();

    void setUrl(const QString &value);
    void setSocketPath(const QUrl &url);
    void setHost(const QUrl &url, int defaultPort);
    void setAllowPlain(const QString &value);
    void setPrefix(const QString &value);
    void setUsername(const QString &value) { m_address.username = value.toUtf8(); }
    void setPasswordFile(const QString &value);
    void setCaFile(const QString &value) { m_address.caFile = readableFile(value); }
    void setCertFile(const QString &value) { m_address.certFile = readableFile(value); }
    void setKeyFile(const QString &value);

    QString readableFile(const QString &value);
    void reject(const QString &why);
    void rejectKey(QLatin1String key, const QString &why);

    const QString m_file;
    const BusGroup m_lines;
    QLatin1String m_key; // the one being read, for the text of a problem
    bool m_allowsPlain = false;
    BusAddress m_address;
};

} // namespace LocalCommunication
