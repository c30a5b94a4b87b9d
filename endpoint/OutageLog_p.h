#pragma once

#include <QString>
#include <QStringList>

namespace LocalCommunication {

/// Tells in the log why the bus is away and when it is there again: one line for every new reason, not one
/// for every try.
class OutageLog
{
public:
    /// Begins anew; `bus` is the address as people read it.
    void begin(const QString &bus);

    void failed(const QString &reason);
    void joined();

private:
    QString m_bus;
    QStringList m_toldReasons; // since it was joined last
};

} // namespace LocalCommunication
