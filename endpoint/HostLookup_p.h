#pragma once

#include "endpoint/LimitedWait_p.h"

#include <QHostInfo>
#include <QObject>
#include <QString>

#include <chrono>

namespace LocalCommunication {

/// Asks the name server where a broker elsewhere is, and waits for the answer only so long.
class HostLookup : public QObject
{
    Q_OBJECT

public:
    enum class Gives {
        Address, ///< each time another one of the addresses of the name
        Name,    ///< the name that was asked for, which is what certificates hold
    };

    static constexpr std::chrono::milliseconds defaultPatience = std::chrono::seconds(5);

    explicit HostLookup(QObject *parent, std::chrono::milliseconds patience = defaultPatience);

    /// One of the two signals follows, unless cancel() comes first.
    void start(const QString &host, Gives gives);
    void cancel() { m_wait.cancel(); }

Q_SIGNALS:
    /// What to connect to.
    void found(const QString &host);
    void failed(const QString &reason);

private:
    void handleResult(const QHostInfo &result);

    QString m_host;
    Gives m_gives = Gives::Address;
    LimitedWait m_wait;
    int m_found = 0;
};

} // namespace LocalCommunication
