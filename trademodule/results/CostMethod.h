#pragma once

#include <QString>

#include <optional>

namespace TradeModule {

/// How the cost of a holding is reckoned when part of it is sold. Over a round trip, from the first share
/// bought to the last one sold, all methods give the same profit; they differ in which sale it stands at.
enum class CostMethod {
    Average, ///< every share has cost the same: the average of all that is held, fees included
    Diluted, ///< what was paid less what was received: what the holding still has to earn; may be negative
    Fifo,    ///< the shares that came in first are sold first
};

/// "average", "diluted" or "fifo": in ledgers, commands and messages. Do not change.
QString wordOf(CostMethod method);
/// The method of its word; letter case matters.
std::optional<CostMethod> costMethodOf(const QString &word);
/// What people call it, in the language of the program.
QString nameOf(CostMethod method);

} // namespace TradeModule
