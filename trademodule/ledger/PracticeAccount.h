#pragma once

#include "trademodule/ledger/Ledger.h"

#include <QString>
#include <QVector>

namespace TradeModule {

/// What an account has when it begins to practise a recorded day: the cash and the holdings of another
/// account, or others that were chosen.
struct PracticeAccount
{
    /// A security that is held.
    struct Held
    {
        SecurityId security;
        QString name;
        qint64 quantity; ///< shares
        Money cost{};    ///< of all of them
    };

    Money cash{};
    QVector<Held> holdings{};
    CostMethod method = CostMethod::Average;

    /// As much as the account in the ledger at `location` has now. The ledger is only read; an Error when
    /// there is none.
    static PracticeAccount of(const QString &location);
};

/// Makes a new ledger at `location` whose account practises `day` and has all of `account` before it begins.
/// An Error when there is a ledger already.
void beginPractice(const QString &location, TradingDate day, const PracticeAccount &account);

} // namespace TradeModule
