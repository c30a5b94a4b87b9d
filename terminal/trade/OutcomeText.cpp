#include "terminal/trade/OutcomeText.h"

#include "terminal/trade/PlainText.h"
#include "terminal/trade/ShownAmount.h"
#include "terminal/trade/TradeTables.h"

namespace Terminal {

namespace {

QString nameOf(const Security &security)
{
    return plainText(security.name.isEmpty() ? security.code : security.name);
}

QString namedOrder(const OrderRequest &order, bool hidesAmounts)
{
    return QStringLiteral("%1 %2").arg(nameOf(order.security), orderSummary(order, hidesAmounts));
}

QString words(const DeskOutcome &outcome, bool hidesAmounts)
{
    return plainText(withoutFigures(outcome.text, hidesAmounts));
}

/// Name and code, whichever is known.
QString fullName(const Security &security)
{
    return QStringLiteral("%1 %2").arg(plainText(security.name), plainText(security.code)).trimmed();
}

} // namespace

QString OutcomeText::sent(const OrderRequest &order, bool hidesAmounts)
{
    return tr("Sent: %1").arg(namedOrder(order, hidesAmounts));
}

QString OutcomeText::askedAgain(const OrderRequest &order, bool hidesAmounts)
{
    return tr("%1: outcome unknown, asking again about this one order; do not send it again yet")
        .arg(namedOrder(order, hidesAmounts));
}

QString OutcomeText::placed(const OrderRequest &order, const DeskOutcome &outcome, bool hidesAmounts)
{
    const QString what = namedOrder(order, hidesAmounts);
    switch (outcome.kind) {
    case DeskOutcome::Kind::Accepted:
        return tr("%1: accepted, number %2").arg(what, plainText(outcome.text));
    case DeskOutcome::Kind::Refused:
        return tr("%1: refused: %2").arg(what, words(outcome, hidesAmounts));
    case DeskOutcome::Kind::NotSent:
        return tr("%1: not sent, there is no connection to the trading module").arg(what);
    case DeskOutcome::Kind::NoAnswer:
        return tr("%1: no answer, and it is not asked for any more; look at the list of orders before you "
                  "send "
                  "it again")
            .arg(what);
    }
    return {};
}

QString OutcomeText::orderName(const OrderRecord &order)
{
    return tr("Order %1 of %2").arg(plainText(order.number), nameOf(order.security));
}

QString OutcomeText::cancelled(const OrderRecord &order, const DeskOutcome &outcome, bool hidesAmounts)
{
    const QString what = orderName(order);
    switch (outcome.kind) {
    case DeskOutcome::Kind::Accepted:
        return tr("%1: %2").arg(what, words(outcome, hidesAmounts));
    case DeskOutcome::Kind::Refused:
        return tr("%1 is not cancelled: %2").arg(what, words(outcome, hidesAmounts));
    case DeskOutcome::Kind::NotSent:
        return tr("%1 is not cancelled: there is no connection to the trading module").arg(what);
    case DeskOutcome::Kind::NoAnswer:
        return tr("%1: no answer yet to its cancellation").arg(what);
    }
    return {};
}

QString OutcomeText::replaceSent(const PriceChange &change)
{
    return tr("%1: replacing it at %2")
        .arg(orderName(change.order), tickText(change.order.security, change.price));
}

QString OutcomeText::replaceAskedAgain(const PriceChange &change)
{
    return tr("%1: whether it is replaced is unknown, asking again").arg(orderName(change.order));
}

QString OutcomeText::replaced(const PriceChange &change, const DeskOutcome &outcome, bool hidesAmounts)
{
    const QString what = orderName(change.order);
    switch (outcome.kind) {
    case DeskOutcome::Kind::Accepted:
        return replacedText(what, change, outcome, hidesAmounts);
    case DeskOutcome::Kind::Refused:
        return tr("%1 stays as it is: %2").arg(what, words(outcome, hidesAmounts));
    case DeskOutcome::Kind::NotSent:
        return tr("%1 stays as it is: there is no connection to the trading module").arg(what);
    case DeskOutcome::Kind::NoAnswer:
        return tr("%1: no answer to its replacement, and it is not asked for any more; look at the list of "
                  "orders")
            .arg(what);
    }
    return {};
}

QString OutcomeText::replacedText(const QString &what, const PriceChange &change, const DeskOutcome &outcome,
                                  bool hidesAmounts)
{
    switch (outcome.replacement.value_or(Trading::ReplacementState::Waiting)) {
    case Trading::ReplacementState::Waiting:
        return replaceSent(change);
    case Trading::ReplacementState::Placed:
        return tr("%1 is replaced by order %2 at %3")
            .arg(what, plainText(outcome.text), tickText(change.order.security, change.price));
    case Trading::ReplacementState::Dealt:
        return tr("%1 was dealt before it could be replaced").arg(what);
    case Trading::ReplacementState::Failed:
        return tr("%1 is cancelled, and NO order stands in its place: %2")
            .arg(what, words(outcome, hidesAmounts));
    }
    return {};
}

OrderQuestion::Words OutcomeText::sendQuestion(const OrderRequest &order, const QString &account)
{
    const double amount = order.price * static_cast<double>(order.quantity);
    QStringList lines{
        tr("Send this order?"),
        fullName(order.security),
        orderSummary(order, false),
        tr("Amount without fees: %1").arg(amountText(amount)),
    };
    if (!account.isEmpty()) {
        lines.append(tr("Account: %1").arg(plainText(account)));
    }
    return {tr("Send an order"), lines.join(QLatin1Char('\n')), orderSummary(order, false),
            tr("Do not send")};
}

QString OutcomeText::cancelQuestion(const OrderRecord &order)
{
    const QStringList lines{
        tr("Cancel this order?"),
        fullName(order.security),
        orderSummary({order.security, order.side, order.price, order.quantity}, false),
        tr("Dealt so far: %1").arg(order.dealt),
        tr("Number: %1").arg(plainText(order.number)),
    };
    return lines.join(QLatin1Char('\n'));
}

namespace {

/// "Buy 300 × 1700.50 of 600519, order 3", a line for each of the first few.
QStringList lineOfEach(const OrderRecords &orders)
{
    constexpr size_t mostLines = 12;
    QStringList lines;
    for (const OrderRecord &order : orders) {
        if (lines.size() == static_cast<int>(mostLines)) {
            lines.append(OutcomeText::tr("… and %1 more").arg(orders.size() - mostLines));
            break;
        }
        lines.append(OutcomeText::tr("%1, order %2")
                         .arg(namedOrder({order.security, order.side, order.price, order.quantity}, false),
                              plainText(order.number)));
    }
    return lines;
}

} // namespace

OrderQuestion::Words OutcomeText::cancelQuestion(const OrderRecords &orders)
{
    const QString count = QString::number(orders.size());
    return {
        tr("Cancel orders"),
        (QStringList(tr("Cancel these %1 orders?").arg(count)) + lineOfEach(orders)).join(QLatin1Char('\n')),
        tr("Cancel all %1").arg(count), tr("Keep them")};
}

OrderQuestion::Words OutcomeText::leaveQuestion(const OrderRecords &working, bool standsStill)
{
    const QString count = QString::number(working.size());
    const QString after =
        standsStill
            ? tr("They are not cancelled; they wait, as the day does, until the practice is continued.")
            : tr("They are not cancelled; nothing here tells you when they are dealt.");
    return {tr("Orders are waiting"),
            (QStringList(tr("Leave? Orders that may still be dealt: %1").arg(count)) + lineOfEach(working) +
             QStringList(after))
                .join(QLatin1Char('\n')),
            tr("Leave"), tr("Stay")};
}

/// What was dealt and at which price, not what was ordered: "MT Buy 200 of 300, average 1413.840, order 17".
QString OutcomeText::dealtFigures(const OrderRecord &order, bool hidesAmounts)
{
    const auto average = order.averagePrice();
    if (!average) {
        return orderName(order);
    }
    const QString all = shownAmount(QString::number(order.quantity), hidesAmounts);
    const QString dealt = shownAmount(QString::number(order.dealt), hidesAmounts);
    const QString quantity = order.dealt < order.quantity ? tr("%1 of %2").arg(dealt, all) : dealt;
    return tr("%1 %2 %3, average %4, order %5")
        .arg(nameOf(order.security), sideText(order.side), quantity, averageText(order),
             plainText(order.number));
}

QString OutcomeText::dealt(const OrderRecord &order, bool hidesAmounts)
{
    const QString what = dealtFigures(order, hidesAmounts);
    return isCancellable(order) ? tr("Part dealt: %1").arg(what) : tr("Dealt: %1").arg(what);
}

OrderQuestion::Words OutcomeText::replaceQuestion(const PriceChange &change)
{
    const OrderRecord &order = change.order;
    const qint64 rest = order.quantity - order.dealt;
    const QStringList lines{
        tr("Replace order %1 from %2 to %3?")
            .arg(plainText(order.number), tickText(order.security, order.price),
                 tickText(change.order.security, change.price)),
        fullName(order.security),
        tr("What is left of it: %1")
            .arg(orderSummary({order.security, order.side, change.price, rest}, false)),
        tr("It is cancelled first; what is left is placed when that is confirmed."),
    };
    return {tr("Replace an order"), lines.join(QLatin1Char('\n')),
            tr("Replace at %1").arg(tickText(change.order.security, change.price)), tr("Leave it as it is")};
}

} // namespace Terminal
