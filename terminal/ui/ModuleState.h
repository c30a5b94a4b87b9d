#pragma once

#include "trading/Presence.h"

#include <QString>
#include <QTime>

namespace Terminal {

class ModuleWatch;

/// How things stand with the trading module, as the window tells it.
struct ModuleState
{
    enum Kind {
        Unasked,      ///< nobody asks for one
        Awaited,      ///< asked for, and not heard yet
        Starting,     ///< the terminal has started its own, which has not said anything yet
        NoBus,        ///< there is no bus to ask on
        Absent,       ///< none is there
        Answering,    ///< one answers
        OtherVersion, ///< one answers, of another version than the terminal's
        ReadOnly,     ///< one answers, and takes no orders
        Foreign,      ///< one answers, but serves another ledger than the window's
        Late,         ///< one answered until `since`, and owes an answer
        Refusing,     ///< one is there and refuses what it is asked
        Silent,       ///< one is there and does not answer any more
        Failed,       ///< the terminal's own could not start, or has ended
    };
    Kind kind = Unasked;
    QString reason{}; ///< which one it is, or why things stand so; may be empty
    QTime since{};    ///< of one that is late

    bool isTrouble() const;
};

/// What a watch finds, in a window whose account is in `ledger`; an empty one is anybody's.
ModuleState moduleStateOf(const ModuleWatch &watch, const QString &ledger);

/// True when the module says which version it is, and it is not the terminal's.
bool isOfAnotherVersion(const Trading::TradePresence &presence, const QString &ownVersion);

/// What a module says of itself, and, where the terminal's version is another, that it is.
QString introductionOf(const Trading::TradePresence &presence, const QString &ownVersion);

/// In a few words, for the user.
QString moduleStateText(const ModuleState &module);

/// Why nobody answers what an overlay asks, in a few words; empty where somebody does, or is to do so.
QString hindranceText(const ModuleState &module);

} // namespace Terminal
