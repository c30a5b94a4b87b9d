#pragma once

#include "terminal/data/Loaded.h"
#include "trading/ClockTime.h"
#include "trading/TradingDate.h"

#include <QString>

#include <optional>

namespace Terminal {

/// What the ledger of a practice tells of itself.
struct PractisedLedger
{
    Trading::TradingDate day = Trading::TradingDate::first(); ///< the recorded one
    std::optional<Trading::ClockTime> reached; ///< how far it was dealt; nothing before its first minute
};

/// Asks the trading module's program about a ledger, and waits for it. A failure says in the module's words,
/// of this language, why it is none of a practice or cannot be read.
Loaded<PractisedLedger> readPractisedLedger(const QString &ledger, const QString &moduleProgram,
                                            const QString &language);

} // namespace Terminal
