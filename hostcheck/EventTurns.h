#pragma once

namespace HostCheck {

/// How often events were dispatched on the user-interface thread, as far as it is known: a turn of the event
/// loop, or of one inside it, counts.
class EventTurns
{
public:
    /// Begins to count, once there is an application; call it at every occasion.
    static void watch();

    static long count();
};

} // namespace HostCheck
