#pragma once

#include "trading/Presence.h"

#include <QString>

namespace Terminal {

class ModuleWatch;

/// How things stand with the trading module, as the window tells it.
struct ModuleState
{
    enum Kind {
        Unasked,   ///< nobody asks for one
        Awaited,   ///< asked for, and not heard yet
        NoBus,     ///< there is no bus to ask on
        Absent,    ///< none is there
        Answering, ///< one answers
        ReadOnly,  ///< one answers, and takes no orders
        Refusing,  ///< one is there and refuses what it is asked
        Silent,    ///< one is there and does not answer any more
        Failed,    ///< the terminal's own could not start, or has ended
    };
    Kind kind = Unasked;
    QString reason{}; ///< which one it is, or why things stand so; may be empty

    bool isTrouble() const { return kind != Unasked && kind != Awaited && kind != Answering; }
};

/// What a watch finds.
ModuleState moduleStateOf(const ModuleWatch &watch);

/// What a module says of itself, and, where the terminal's version is another, that it is.
QString introductionOf(const Trading::TradePresence &presence, const QString &ownVersion);

/// In a few words, for the user.
QString moduleStateText(const ModuleState &module);

} // namespace Terminal
