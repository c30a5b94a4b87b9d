#pragma once

#include <QString>

namespace Terminal {

/// How things stand with the trading module, as the window tells it.
struct ModuleState
{
    enum Kind {
        Unasked,   ///< nobody asks for one
        Awaited,   ///< asked for, and not heard yet
        Absent,    ///< none answers
        Answering, ///< one answers
        ReadOnly,  ///< one answers, and takes no orders
        Failed,    ///< the terminal's own could not start or has ended
    };
    Kind kind = Unasked;
    QString reason{}; ///< why, in a sentence with what to do; may be empty

    bool isTrouble() const { return kind == Absent || kind == ReadOnly || kind == Failed; }
};

/// In a few words, for the user.
QString moduleStateText(const ModuleState &module);

} // namespace Terminal
