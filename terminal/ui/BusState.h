#pragma once

#include "terminal/services/ModuleWatch.h"

#include <QString>

namespace Terminal {

/// How things stand with the bus, as the window tells it.
struct BusState
{
    enum Kind {
        Unasked, ///< nobody wants one
        Joining, ///< no bus has accepted the window yet
        Joined,
        Lost,   ///< it is gone, and is being joined again
        Failed, ///< the terminal's own broker could not start, or hung
    };
    Kind kind = Unasked;
    QString reason{}; ///< why things stand so; may be empty

    bool isTrouble() const { return kind == Lost || kind == Failed; }
};

/// What a watch finds.
BusState busStateOf(const ModuleWatch &watch);

/// In a few words, for the user; empty where nobody wants a bus.
QString busStateText(const BusState &bus);

} // namespace Terminal
