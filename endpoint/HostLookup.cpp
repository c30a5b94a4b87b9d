#include "endpoint/HostLookup_p.h"

#include <QHostAddress>

namespace LocalCommunication {

HostLookup::HostLookup(QObject *parent, std::chrono::milliseconds patience)
    : QObject(parent),
      m_wait(this, patience)
{
    connect(&m_wait, &LimitedWait::tooLong, this,
            [this] { Q_EMIT failed(QStringLiteral("the name server does not answer")); });
}

void HostLookup::start(const QString &host, Gives gives)
{
    m_host = host;
    m_gives = gives;
    m_wait.start([this, host]() -> LimitedWait::Then {
        const QHostInfo result = QHostInfo::fromName(host);
        return [this, result] { handleResult(result); };
    });
}

void HostLookup::handleResult(const QHostInfo &result)
{
    const QList<QHostAddress> addresses = result.addresses();
    if (result.error() != QHostInfo::NoError || addresses.isEmpty()) {
        Q_EMIT failed(result.errorString());
    } else if (m_gives == Gives::Name) {
        Q_EMIT found(m_host);
    } else {
        Q_EMIT found(addresses[m_found++ % addresses.size()].toString());
    }
}

} // namespace LocalCommunication
