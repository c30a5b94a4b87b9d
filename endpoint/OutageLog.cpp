#include "endpoint/OutageLog_p.h"

#include "endpoint/Logging_p.h"

namespace LocalCommunication {

void OutageLog::begin(const QString &bus)
{
    m_bus = bus;
    m_toldReasons.clear();
    m_joinsInOutage = 0;
}

void OutageLog::failed(const QString &reason)
{
    if (m_toldReasons.contains(reason)) {
        return;
    }
    m_toldReasons.append(reason);
    qCWarning(lcBus, "%s: %s; trying again until the bus is there", qUtf8Printable(m_bus),
              qUtf8Printable(reason));
}

void OutageLog::joined()
{
    if (m_toldReasons.isEmpty()) {
        return;
    }
    if (m_joinsInOutage++ == 0) {
        tellJoined();
    }
}

void OutageLog::settled()
{
    if (m_joinsInOutage > 1) {
        tellJoined();
    }
    begin(m_bus);
}

void OutageLog::tellJoined() const
{
    qCInfo(lcBus, "%s: joined", qUtf8Printable(m_bus));
}

} // namespace LocalCommunication
