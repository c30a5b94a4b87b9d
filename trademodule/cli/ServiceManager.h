#pragma once

#include <QString>

namespace TradeModule {

/// The program that has started this one as a service of the machine and listens at the Unix socket
/// NOTIFY_SOCKET for how it stands, as systemd does. Where there is none, nothing is said.
class ServiceManager
{
public:
    ServiceManager();

    /// This service is up; `state` says in a line what it does. Also said with each change of that.
    void tellReady(const QString &state) const;
    /// Its event loop turns; one that hangs does not say so any more and is started anew.
    void tellAlive() const;
    /// It was told to end and does.
    void tellEnding() const;

private:
    void tell(const QByteArray &lines) const;

    QByteArray m_address;
};

} // namespace TradeModule
