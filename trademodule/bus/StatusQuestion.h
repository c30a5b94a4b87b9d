#pragma once

#include "trading/ModuleStatus.h"

#include <QString>

#include <optional>

namespace TradeModule {

/// How things stand on a bus, as a visitor finds them.
enum class Standing {
    Serving,      ///< a module serves, and its ledger can be used
    LedgerAway,   ///< a module serves, and its ledger cannot be used at present
    NoAnswer,     ///< a module is announced and answers nothing: it hangs, or was cut off just now
    NobodyServes, ///< there is a bus, and no module on it
    NoBus,        ///< the bus cannot be joined
};

/// What askStatus() has found out.
struct BusStatus
{
    Standing standing = Standing::NoBus;
    /// Of a module that tells it. One of another maker need not: then it holds what the presence says.
    std::optional<Trading::ModuleStatus> status = {};
    bool isTold = false; ///< the module told all of it
};

/// Asks the module that serves on the bus instance of `busDirectory`. Takes seven seconds at most.
BusStatus askStatus(const QString &busDirectory);

} // namespace TradeModule
