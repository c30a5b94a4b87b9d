#include "endpoint/LossLog_p.h"

#include "endpoint/Logging_p.h"

namespace LocalCommunication {

void LossLog::notSent(const QByteArray &path, const QString &why)
{
    if (m_notSent.isDue()) {
        qCWarning(lcBus, "A message to '%s' was not sent: %s (%d more before it)", path.constData(),
                  qUtf8Printable(why), m_notSent.takeSuppressed());
    }
}

void LossLog::lostWithConnection(int messages) const
{
    if (messages > 0) {
        qCWarning(lcBus, "%s: %d messages were lost with the connection", qUtf8Printable(m_bus), messages);
    }
}

void LossLog::perhapsLost() const
{
    qCWarning(lcBus, "%s: the broker does not answer; what was sent to it last may be lost",
              qUtf8Printable(m_bus));
}

void LossLog::notAwaited()
{
    if (m_notAwaited.isDue()) {
        qCWarning(lcBus,
                  "%s: too much waits to be delivered: an answer was not waited for (%d more before it)",
                  qUtf8Printable(m_bus), m_notAwaited.takeSuppressed());
    }
}

void LossLog::notSubscribed(const QByteArray &path, const QString &why) const
{
    qCWarning(lcBus, "%s: subscribing to '%s' failed: %s", qUtf8Printable(m_bus), path.constData(),
              qUtf8Printable(why));
}

} // namespace LocalCommunication
