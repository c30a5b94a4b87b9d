#pragma once

#include <QString>
#include <QStringList>

namespace LocalCommunication {

/// Tells in the log why the bus is away and when it is there again. A line for every new reason, not one for
/// every try; and a bus that comes and goes is one outage, not many.
class OutageLog
{
public:
    /// Begins anew; `bus` is the address as people read it.
    void begin(const QString &bus);

    void failed(const QString &reason);
    void joined();

    /// It was joined and has stayed for a while: the outage is over.
    void settled();

private:
    void tellJoined() const;

    QString m_bus;
    QStringList m_toldReasons; // of this outage
    int m_joinsInOutage = 0;
};

} // namespace LocalCommunication
