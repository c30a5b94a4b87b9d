#pragma once

#include "endpoint/WarningThrottle_p.h"

#include <QByteArray>
#include <QString>

namespace LocalCommunication {

/// Tells in the log what did not make it, so that nothing is lost without a word.
class LossLog
{
public:
    /// Begins anew; `bus` is the address as people read it.
    void begin(const QString &bus) { m_bus = bus; }

    /// A message was not taken; told unless there were too many recently.
    void notSent(const QByteArray &path, const QString &why);

    /// So many messages were taken and not sent when the connection ended; nothing is told of none.
    void lostWithConnection(int messages) const;

    /// The broker did not say that it had read everything.
    void perhapsLost() const;

    /// An answer was not waited for, because so much waits to be delivered that nothing more is read; told
    /// unless there were too many recently.
    void notAwaited();

    void notSubscribed(const QByteArray &path, const QString &why) const;

private:
    QString m_bus;
    WarningThrottle m_notSent;
    WarningThrottle m_notAwaited;
};

} // namespace LocalCommunication
