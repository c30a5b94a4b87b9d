#pragma once

#include <QtGlobal>

/// While one lives Qt's clocks begin at 10:00 of 2 January 2024 in Shanghai and go on whenever Qt looks at
/// them; a sleep takes no time. So waits of a second cost nothing, and the same input always sees the same
/// times. There is one at a time. Linked in, it stands before the clocks of the C library: of Linux only.
class FastClock
{
public:
    FastClock();
    ~FastClock();
    Q_DISABLE_COPY_MOVE(FastClock)
};
