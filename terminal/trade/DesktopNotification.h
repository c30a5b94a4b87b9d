#pragma once

#include <QString>

namespace Terminal {

/// Asks the desktop to show a notification, and returns at once. Without a desktop that shows such (of
/// freedesktop.org, on the session's message bus) nothing happens.
void showDesktopNotification(const QString &title, const QString &text);

} // namespace Terminal
