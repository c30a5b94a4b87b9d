#include "terminal/ui/MessageAccessible.h"

#include "terminal/ui/MessageBar.h"

namespace Terminal {

namespace {

QAccessibleInterface *makeInterface(const QString & /*className*/, QObject *object)
{
    auto *const message = qobject_cast<MessageBar *>(object);
    return message == nullptr ? nullptr : new MessageAccessible(message);
}

} // namespace

MessageAccessible::MessageAccessible(MessageBar *message)
    : QAccessibleWidget(message, QAccessible::Notification)
{
}

void MessageAccessible::install()
{
    QAccessible::installFactory(&makeInterface);
}

} // namespace Terminal
