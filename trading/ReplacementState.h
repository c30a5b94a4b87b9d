#pragma once

#include <QString>

#include <optional>

namespace Trading {

/// How far the replacement of an order is.
enum class ReplacementState {
    Waiting, ///< the old order is being cancelled
    Placed,  ///< another order stands in its place
    Dealt,   ///< nothing of the old order was left to be placed anew
    Failed   ///< what was left of the old order is cancelled, and nothing stands in its place
};

/// Its word on the bus and in ledgers, see ReplacementWords.
QString wordOf(ReplacementState state);
std::optional<ReplacementState> replacementStateOf(const QString &word);

} // namespace Trading
