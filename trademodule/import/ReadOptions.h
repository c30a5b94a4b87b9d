#pragma once

#include "trademodule/SharedTypes.h"
#include "trademodule/import/ImportProfile.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

namespace TradeModule {

/// What a user adds to a statement that does not tell everything.
struct ReadOptions
{
    std::optional<TradingDate> date;             ///< for a statement without a date column
    QHash<QString, SecurityId> securitiesByName; ///< for a statement without a code column
    QStringList accounts; ///< of a statement with several, these; empty for its only one
    ImportProfile profile{};
    bool areAmountsUnsigned = false; ///< net amounts have no signs: the reader finds out
};

} // namespace TradeModule
