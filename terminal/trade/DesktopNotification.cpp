#include "terminal/trade/DesktopNotification.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

namespace Terminal {

void showDesktopNotification(const QString &title, const QString &text)
{
    const QString service = QStringLiteral("org.freedesktop.Notifications");
    QDBusMessage call = QDBusMessage::createMethodCall(
        service, QStringLiteral("/org/freedesktop/Notifications"), service, QStringLiteral("Notify"));
    constexpr uint newOne = 0;
    constexpr int asLongAsTheDesktopLikes = -1;
    const QString icon = QStringLiteral("tradeterminal");
    const QString plain = text.toHtmlEscaped(); // some desktops read markup
    call.setArguments({QCoreApplication::applicationName(), newOne, icon, title, plain, QStringList(),
                       QVariantMap(), asLongAsTheDesktopLikes});
    QDBusConnection::sessionBus().send(call);
}

} // namespace Terminal
