#pragma once

#include <QAccessibleWidget>

namespace Terminal {

class MessageBar;

/// A message for screen readers: a notification, which they read out when it comes up.
class MessageAccessible : public QAccessibleWidget
{
public:
    explicit MessageAccessible(MessageBar *message);

    /// Has Qt use this class for messages. May be called more than once.
    static void install();
};

} // namespace Terminal
