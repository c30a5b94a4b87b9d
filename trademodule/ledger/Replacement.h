#pragma once

#include "trademodule/SharedTypes.h"
#include "trading/ReplacementState.h"

#include <QString>

namespace TradeModule {

using Trading::ReplacementState;

/// The wish to have what is left of an order placed at another price, and what became of it.
struct Replacement
{
    QString clientNumber; ///< what the asker calls it, unique among replacements
    qint64 orderNumber = 0;
    Money price{}; ///< of the new order
    ReplacementState state = ReplacementState::Waiting;
    qint64 newOrderNumber = 0; ///< when it is placed
    QString reason{};          ///< why no order was placed, when it failed
};

} // namespace TradeModule
