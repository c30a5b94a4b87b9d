#pragma once

#include "endpoint/BusAddress.h"

#include <QHostInfo>
#include <QObject>

namespace LocalCommunication {

/// Asks the name server where a broker elsewhere is, without waiting as the MQTT library would.
class HostLookup : public QObject
{
    Q_OBJECT

public:
    explicit HostLookup(QObject *parent) : QObject(parent) {}
    ~HostLookup() override { cancel(); }

    /// One of the two signals follows, unless cancel() comes first.
    void start(const BusAddress &address);
    void cancel();

Q_SIGNALS:
    /// What to connect to: each time another one of the addresses of the name. With TLS it is the name, which
    /// is what certificates hold; the name server has just answered, so asking it again takes no time.
    void found(const QString &host);
    void failed(const QString &reason);

private:
    void handleResult(const QHostInfo &result);

    BusAddress m_address;
    int m_lookup = 0; // its number at Qt, 0 when none is under way
    int m_found = 0;
};

} // namespace LocalCommunication
