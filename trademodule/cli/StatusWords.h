#pragma once

#include "trademodule/bus/StatusQuestion.h"

#include <QVector>

namespace TradeModule {

/// What is said of a Standing.
struct StandingWords
{
    Standing standing;
    const char *word;     ///< for programs, the same in every language
    int exitCode;         ///< of `trademodule status`
    const char *sentence; ///< for people, to be translated
};

/// Each Standing once, in their order.
const QVector<StandingWords> &allStandings();
const StandingWords &wordsOf(Standing standing);

} // namespace TradeModule
