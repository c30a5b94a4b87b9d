#pragma once

#include "trademodule/import/Business.h"
#include "trademodule/ledger/Execution.h"
#include "trademodule/ledger/MoneyEntry.h"

#include <optional>

namespace TradeModule {

/// What a line of a statement does to the account. One that has neither shares nor money changes nothing.
struct Entry
{
    BusinessKind kind{"", Effect::Nothing};
    QString word{}; ///< what the statement calls it

    std::optional<Execution> shares{};
    std::optional<MoneyEntry> money{};

    std::optional<Money> cash{}; ///< what the account's cash changed by, in yuan, as far as the line tells
    std::optional<qint64> sharesAfter{};
    std::optional<Money> cashAfter{}; ///< in yuan

    bool isReversal = false;   ///< the shares are those of an earlier entry, which this one takes back
    bool isFeeInDoubt = false; ///< the fees do not come to what the account paid beyond the amount
    bool isFurniture = false;  ///< a sum or a line of text, which a client prints around the entries
};

/// What comes of a line.
enum class Outcome {
    Trade,
    Shares,  ///< came or left without a trade
    Money,   ///< alone
    Nothing, ///< left out, as it changes neither
    KeptOut, ///< short sales and their covers
};

Outcome outcomeOf(const Entry &entry);

} // namespace TradeModule
