#pragma once

#include "trademodule/ledger/Execution.h"

#include <QHash>
#include <QVector>

namespace TradeModule {

/// A statement's entries on their way into the ledger, in order of time.
struct Statement
{
    QString file; ///< where it came from, kept with the entries
    Executions executions;
    QHash<SecurityId, QString> names;
};

/// What became of a statement.
struct Booked
{
    int added = 0;
    int alreadyThere = 0;
    QVector<Execution> lastAdded;    ///< the newest added entry of each security that has one
    QVector<SecurityId> unexplained; ///< securities of which more was sold than came in
};

} // namespace TradeModule
