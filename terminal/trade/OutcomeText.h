#pragma once

#include "terminal/trade/OrderDesk.h"
#include "terminal/trade/OrderQuestion.h"

#include <QCoreApplication>

namespace Terminal {

/// What the user reads of an order's way to the trading module and back, translated: a line that names
/// security and order, so that results of several are told apart. Where amounts are hidden, figures in the
/// module's own words are, too.
class OutcomeText
{
    Q_DECLARE_TR_FUNCTIONS(OutcomeText)

public:
    static QString sent(const OrderRequest &order, bool hidesAmounts);
    static QString askedAgain(const OrderRequest &order, bool hidesAmounts);
    static QString placed(const OrderRequest &order, const DeskOutcome &outcome, bool hidesAmounts);
    static QString dealt(const OrderRecord &order, bool hidesAmounts);
    static QString cancelled(const OrderRecord &order, const DeskOutcome &outcome, bool hidesAmounts);

    static QString replaceSent(const PriceChange &change);
    static QString replaceAskedAgain(const PriceChange &change);
    static QString replaced(const PriceChange &change, const DeskOutcome &outcome, bool hidesAmounts);

    /// The questions before an order is sent, replaced or cancelled. They show everything, also while amounts
    /// are hidden: the user has to know what he does. `account` may be empty: it is not known.
    static OrderQuestion::Words sendQuestion(const OrderRequest &order, const QString &account);
    static QString cancelQuestion(const OrderRecord &order);
    /// Before several are cancelled.
    static OrderQuestion::Words cancelQuestion(const OrderRecords &orders);
    /// Before the window is left while these orders wait; `standsStill`: their market goes with the window.
    static OrderQuestion::Words leaveQuestion(const OrderRecords &working, bool standsStill);
    static OrderQuestion::Words replaceQuestion(const PriceChange &change);

private:
    static QString orderName(const OrderRecord &order);
    static QString dealtFigures(const OrderRecord &order, bool hidesAmounts);
    static QString replacedText(const QString &what, const PriceChange &change, const DeskOutcome &outcome,
                                bool hidesAmounts);
};

} // namespace Terminal
