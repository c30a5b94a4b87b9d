#include "terminal/trade/OutcomeText.h"

#include "terminal/trade/TradeTables.h"

namespace Terminal {

QString OutcomeText::sent(const OrderRequest &order, bool hidesAmounts)
{
    return tr("Sent: %1").arg(orderSummary(order, hidesAmounts));
}

QString OutcomeText::placed(const OrderRequest &order, const DeskOutcome &outcome, bool hidesAmounts)
{
    const QString what = orderSummary(order, hidesAmounts);
    switch (outcome.kind) {
    case DeskOutcome::Kind::Accepted:
        return tr("%1: accepted, number %2").arg(what, outcome.text);
    case DeskOutcome::Kind::Refused:
        return tr("%1: refused: %2").arg(what, outcome.text);
    case DeskOutcome::Kind::NotSent:
        return tr("%1: not sent, there is no connection to the trading module").arg(what);
    case DeskOutcome::Kind::NoAnswer:
        return tr("%1: no answer yet; look at the list of orders before you send it again").arg(what);
    }
    return {};
}

QString OutcomeText::cancelled(const OrderRecord &order, const DeskOutcome &outcome)
{
    switch (outcome.kind) {
    case DeskOutcome::Kind::Accepted:
        return outcome.text;
    case DeskOutcome::Kind::Refused:
        return tr("Order %1 is not cancelled: %2").arg(order.number, outcome.text);
    case DeskOutcome::Kind::NotSent:
        return tr("Order %1 is not cancelled: there is no connection to the trading module")
            .arg(order.number);
    case DeskOutcome::Kind::NoAnswer:
        return tr("No answer yet to the cancellation of order %1").arg(order.number);
    }
    return {};
}

QString OutcomeText::cancelQuestion(const OrderRecord &order)
{
    const QStringList lines{
        tr("Cancel this order?"),
        QStringLiteral("%1 %2").arg(order.security.name, order.security.code),
        orderSummary({order.security, order.side, order.price, order.quantity}, false),
        tr("Dealt so far: %1").arg(order.dealt),
        tr("Number: %1").arg(order.number),
    };
    return lines.join(QLatin1Char('\n'));
}

} // namespace Terminal
