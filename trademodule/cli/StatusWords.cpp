#include "trademodule/cli/StatusWords.h"

#include "trademodule/cli/Command.h"

namespace TradeModule {

namespace {

// 1 and 2 are those of every command
enum { LedgerAwayCode = 3, NoAnswerCode, NobodyServesCode, NoBusCode };

} // namespace

const QVector<StandingWords> &allStandings()
{
    static const QVector<StandingWords> all = {
        {Standing::Serving, "serving", Succeeded, QT_TR_NOOP("a trading module serves")},
        {Standing::LedgerAway, "ledger-away", LedgerAwayCode,
         QT_TR_NOOP("a trading module serves, but cannot use its ledger")},
        {Standing::NoAnswer, "no-answer", NoAnswerCode,
         QT_TR_NOOP("a trading module is announced, but does not answer")},
        {Standing::NobodyServes, "nobody-serves", NobodyServesCode,
         QT_TR_NOOP("no trading module serves on this bus")},
        {Standing::NoBus, "no-bus", NoBusCode, QT_TR_NOOP("the bus cannot be joined")},
    };
    return all;
}

const StandingWords &wordsOf(Standing standing)
{
    return allStandings()[static_cast<int>(standing)];
}

} // namespace TradeModule
