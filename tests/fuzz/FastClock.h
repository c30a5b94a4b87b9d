#pragma once

#include <QtGlobal>

/// While one lives every clock of the program begins at 10:00 of 2 January 2024 in Shanghai and goes on
/// whenever somebody looks at it; a sleep takes no time. So waits of a second cost nothing, and the same
/// input always sees the same times. There is one at a time. Linked in, it stands before the clocks of the C
/// library: of Linux only.
class FastClock
{
public:
    FastClock();
    ~FastClock();
    Q_DISABLE_COPY_MOVE(FastClock)
};
