#pragma once

#include "trademodule/ledger/Execution.h"
#include "trademodule/ledger/MoneyEntry.h"

#include <QHash>
#include <QStringList>
#include <QVector>

#include <optional>

namespace TradeModule {

/// Cash as a statement tells it, after its newest entry.
struct StatedCash
{
    TradingDate date;
    ClockTime time;
    Money balance;
};

/// What to do with entries of which nobody can tell whether the ledger has them in another form.
enum class Doubt {
    Ask, ///< book nothing, and name them
    Same,
    New,
};

/// A statement's entries on their way into the ledger, in order of time.
struct Statement
{
    QString file; ///< where it came from, kept with the entries
    Executions executions;
    QHash<SecurityId, QString> names;
    MoneyEntries money{};
    QString account{};     ///< as the statement names it; may be empty
    QStringList holders{}; ///< shareholder's codes
    std::optional<StatedCash> cash{};
    Doubt doubt = Doubt::Ask;
    QString mark{};    ///< of whoever imports, who finds the import by it again; may be empty
    QString profile{}; ///< how the broker names things, kept once the entries are; empty: as it was
};

/// What became of a statement.
struct Booked
{
    qint64 number = 0; ///< of the import, see Ledger::imports(); 0 for a statement without entries
    int added = 0;
    int alreadyThere = 0;
    int inAnotherForm = 0; ///< of those already there: another kind of export told them
    int completedFees = 0; ///< of those already there: their fee was not known before
    int moneyAdded = 0;
    int moneyAlreadyThere = 0;
    QVector<Execution> lastAdded;    ///< the newest added entry of each security that has one
    QVector<SecurityId> unexplained; ///< securities of which more was sold than came in
    Executions doubtful;             ///< not empty: nothing was booked, see Doubt
};

} // namespace TradeModule
