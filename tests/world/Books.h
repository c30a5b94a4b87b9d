#pragma once

#include "tests/world/SimulatedMarket.h"
#include "tests/world/SimulatedTerminal.h"
#include "trademodule/ledger/Ledger.h"
#include "trademodule/ledger/OrderBook.h"

#include <string>
#include <vector>

namespace World {

/// Looks into the ledger of a world from beside it: does it hold what was promised? Each function tells what
/// does not hold, in words; nothing when all is well.
class Books
{
public:
    using Findings = std::vector<std::string>;

    explicit Books(const QString &ledger);

    /// True when the ledger is another one than at the last call, or it is the first.
    bool haveChanged();

    /// Books a statement beside all modules, as another program may.
    void add(const TradeModule::Statement &statement);

    /// Orders, executions, holdings and cash agree with each other, whatever was done.
    Findings audit();
    /// No quote was dealt twice, and nobody sold what he had not held since the day before.
    Findings checkDealing(const SimulatedMarket &market);
    /// Each confirmed wish stands in the books once and as it was wished, each refused one does not, and
    /// nothing is in them that nobody wished.
    Findings checkWishes(const std::vector<Wish> &wishes);
    /// The wishes have ended: each user knows what became of his.
    static Findings checkEnded(const std::vector<Wish> &wishes);
    /// Nobody was told after this instant that no answer came.
    static Findings checkGivenUp(const std::vector<Wish> &wishes, Instant latest);
    /// What a terminal shows is what the ledger holds.
    Findings checkShown(SimulatedTerminal *terminal);

private:
    void checkPlacing(const Wish &wish, Findings *findings);
    void checkReplacing(const Wish &wish, Findings *findings);
    void checkCancelling(const Wish &wish, Findings *findings);
    void checkOrigins(const std::vector<Wish> &wishes, Findings *findings);
    void checkOrders(SimulatedTerminal *terminal, Findings *findings);
    void checkAccount(SimulatedTerminal *terminal, Findings *findings);
    void checkTrades(SimulatedTerminal *terminal, Findings *findings);

    TradeModule::Ledger m_ledger;
    TradeModule::OrderBook m_orders;
    QString m_state; ///< of the ledger, when it was asked for last
};

} // namespace World
