#include "endpoint/HostLookup_p.h"

#include <QHostAddress>

namespace LocalCommunication {

void HostLookup::start(const BusAddress &address)
{
    cancel();
    m_address = address;
    m_lookup = QHostInfo::lookupHost(address.host, this, &HostLookup::handleResult);
}

void HostLookup::cancel()
{
    if (m_lookup != 0) {
        QHostInfo::abortHostLookup(m_lookup);
        m_lookup = 0;
    }
}

void HostLookup::handleResult(const QHostInfo &result)
{
    if (result.lookupId() != m_lookup) {
        return; // cancelled when its result was already on its way
    }
    m_lookup = 0;
    const QList<QHostAddress> addresses = result.addresses();
    if (result.error() != QHostInfo::NoError || addresses.isEmpty()) {
        Q_EMIT failed(result.errorString());
    } else if (m_address.transport == BusAddress::Transport::Tls) {
        Q_EMIT found(m_address.host);
    } else {
        Q_EMIT found(addresses[m_found++ % addresses.size()].toString());
    }
}

} // namespace LocalCommunication
