#pragma once

#include "terminal/trade/OrderDesk.h"

#include <QCoreApplication>

namespace Terminal {

/// What the user reads of an order's way to the trading module and back, translated.
class OutcomeText
{
    Q_DECLARE_TR_FUNCTIONS(OutcomeText)

public:
    static QString sent(const OrderRequest &order, bool hidesAmounts);
    static QString placed(const OrderRequest &order, const DeskOutcome &outcome, bool hidesAmounts);
    static QString cancelled(const OrderRecord &order, const DeskOutcome &outcome);

    /// The question before an order is cancelled. It shows everything, also while amounts are hidden: the
    /// user has to know what he cancels.
    static QString cancelQuestion(const OrderRecord &order);
};

} // namespace Terminal
