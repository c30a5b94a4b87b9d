#pragma once

#include "terminal/data/Loaded.h"
#include "trading/ClockTime.h"

#include <QString>

#include <optional>

namespace Terminal {

struct PracticeSession;

/// How far the trading module has dealt a session's day; no time before its first minute. Asks the module's
/// program and waits for it. A failure says why it does not know, for the user.
Loaded<std::optional<Trading::ClockTime>> practiceProgress(const PracticeSession &session,
                                                           const QString &moduleProgram);

} // namespace Terminal
