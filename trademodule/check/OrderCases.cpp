#include "trademodule/check/OrderCases.h"

#include "tradechartobject/common/OrderStatusTable.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/check/CaseRun.h"
#include "trading/ModuleVocabulary.h"
#include "trading/ReplacementState.h"

#include <QCoreApplication>
#include <QJsonDocument>

#include <algorithm>

namespace TradeModule {

using namespace TradeChart::CmdType;
using namespace TradeChart::TradeKeyFields;
using namespace Trading;
using namespace Trading::CmdType;

namespace {

constexpr int quantity = 100;
constexpr int forbidden = 3;
constexpr int notUnderstood = 1;

QString field(const QJsonObject &row, const char *key)
{
    return row.value(QLatin1String(key)).toString();
}

QJsonObject with(QJsonObject question, const char *key, const QJsonValue &value)
{
    question.insert(QLatin1String(key), value);
    return question;
}

/// A buy of a hundred shares under a number of the check's own.
QJsonObject placing(const CaseRun &run, const QString &clientNumber)
{
    QJsonObject question = run.question(ENTRUSTPLACE);
    question.insert(QLatin1String(RTSBSFLAG), QStringLiteral("0B"));
    question.insert(QLatin1String(RTSENTRUSTPRICE), run.settings().orderPrice->text());
    question.insert(QLatin1String(RTSENTRUSTQTY), QString::number(quantity));
    return clientNumber.isEmpty() ? question : with(question, PlaceFields::CLIENTNO, clientNumber);
}

QJsonObject ofOrder(const CaseRun &run, const char *command, const QString &number)
{
    const QJsonObject question = with(run.question(command), RTSORDERDATE, TradingDate::today().text());
    return with(question, RTSORDERNO, number);
}

/// What follows is about the order; without one there is nothing to look at.
bool hasOrder(CaseRun &run)
{
    const bool isThere = !run.memory().order.number.isEmpty();
    if (!isThere) {
        run.skip(translated("no order could be placed"));
    }
    return isThere;
}

bool hasOrderAnd(CaseRun &run, const char *capability)
{
    if (!run.isSaidToKnow(capability)) {
        run.skip(translated("its presence does not say \"%1\"").arg(QLatin1String(capability)));
        return false;
    }
    return hasOrder(run);
}

/// The order in a list; empty when it is not there.
QJsonObject listed(const QJsonArray &orders, const QString &number)
{
    const auto row = std::find_if(orders.begin(), orders.end(), [&number](const QJsonValue &order) {
        return field(order.toObject(), RTSORDERNO) == number;
    });
    return row == orders.end() ? QJsonObject() : row->toObject();
}

/// Asks again until the condition holds; false when it does not in time.
bool holdsInTime(CaseRun &run, const std::function<bool()> &condition)
{
    constexpr std::chrono::milliseconds pause(100);
    for (auto left = run.settings().patience; left > pause; left -= pause) {
        if (condition()) {
            return true;
        }
        run.conversation().pause(pause);
    }
    return condition();
}

/// Waits for a notification about the security among those that came after the first `known`.
void expectTold(CaseRun &run, int known, const QString &fault)
{
    const auto isTold = [&] {
        const QByteArrayList told = run.conversation().notifications().mid(known);
        return std::any_of(told.begin(), told.end(), [&](const QByteArray &word) {
            return field(QJsonDocument::fromJson(word).object(), STKCODE) == run.settings().security.code;
        });
    };
    run.expect(run.conversation().waitUntil(isTold), fault);
    for (const QByteArray &word : run.conversation().notifications().mid(known)) {
        run.judgeUnasked(MessageRole::Notification, word);
    }
}

// Placing

void place(CaseRun &run)
{
    const int before = run.rows(run.question(ENTRUSTTODAYTRADE)).size();
    const bool hasNumbers = run.isSaidToKnow(Capability::CLIENTNO);
    PlacedOrder order;
    order.clientNumber = hasNumbers ? run.settings().mark + QStringLiteral("-order") : QString();
    const QJsonObject answer = run.askWell(placing(run, order.clientNumber));
    order.number = field(answer.value(QLatin1String(DATA)).toObject(), RTSORDERNO);
    run.expect(order.number.isEmpty() ||
                   run.presence().value(QLatin1String(PresenceFields::READONLY)) != QJsonValue(true),
               translated("it takes orders, but its presence says that it takes none"));
    run.memory().order = order;
    if (!order.number.isEmpty()) {
        const int after = run.rows(run.question(ENTRUSTTODAYTRADE)).size();
        run.expect(after == before + 1,
                   translated("%1 orders are listed in place of %2").arg(after).arg(before + 1));
    }
}

void findPlaced(CaseRun &run)
{
    if (!hasOrder(run)) {
        return;
    }
    const QJsonObject row = listed(run.rows(run.question(ENTRUSTTODAYTRADE)), run.memory().order.number);
    run.expect(!row.isEmpty(), translated("the order is not listed"));
    const bool isAsPlaced = field(row, RTSBSFLAG) == QLatin1String("0B") &&
                            field(row, RTSENTRUSTPRICE).toDouble() == run.settings().orderPrice->yuan() &&
                            field(row, RTSENTRUSTQTY).toInt() == quantity;
    run.expect(row.isEmpty() || isAsPlaced,
               translated("the order is listed with another side, price or quantity"));
}

void findOpen(CaseRun &run)
{
    if (hasOrderAnd(run, Capability::OPENORDERS)) {
        const QJsonObject question{{QLatin1String(CMD), QLatin1String(OPENORDERS)}};
        const QJsonObject row = listed(run.rows(question), run.memory().order.number);
        run.expect(!row.isEmpty(), translated("the order is not listed"));
        const QString code = field(row, STKCODE);
        run.expect(code.isEmpty() || code == run.settings().security.code,
                   translated("the order is listed under another security"));
    }
}

void placeAgain(CaseRun &run)
{
    if (hasOrderAnd(run, Capability::CLIENTNO)) {
        const QJsonObject answer = run.askWell(placing(run, run.memory().order.clientNumber));
        const QString number = field(answer.value(QLatin1String(DATA)).toObject(), RTSORDERNO);
        run.expect(number == run.memory().order.number,
                   translated("the order is placed a second time, as \"%1\"").arg(number));
    }
}

void placeOtherUnderTheSameNumber(CaseRun &run)
{
    if (hasOrderAnd(run, Capability::CLIENTNO)) {
        const QJsonObject question = placing(run, run.memory().order.clientNumber);
        run.askInVain(with(question, RTSENTRUSTQTY, QString::number(2 * quantity)), nullptr, forbidden);
    }
}

/// A telling of what happens to the order, of which nothing is known but that it comes.
void hearOfAnother(CaseRun &run)
{
    if (!hasOrder(run)) {
        return;
    }
    const int known = run.conversation().notifications().size();
    const QJsonObject answer = run.askWell(placing(run, QString()));
    expectTold(run, known, translated("nobody is told of the new order"));
    const QString number = field(answer.value(QLatin1String(DATA)).toObject(), RTSORDERNO);
    run.askWell(ofOrder(run, ENTRUSTCANCEL, number));
}

/// A question with one thing wrong.
struct WrongOrder
{
    const char *id;
    const char *asks;
    const char *command;
    const char *key;
    QJsonValue value; ///< undefined: the key is left out
    int kind = notUnderstood;
};

std::vector<WrongOrder> wrongOrders()
{
    const QJsonValue leftOut(QJsonValue::Undefined);
    constexpr int tooLong = 65;
    return {
        {"place.no-side", QT_TR_NOOP("an order without \"bsflag2\""), ENTRUSTPLACE, RTSBSFLAG, leftOut},
        {"place.other-side", QT_TR_NOOP("an order that neither buys nor sells"), ENTRUSTPLACE, RTSBSFLAG,
         QStringLiteral("XX")},
        {"place.price-word", QT_TR_NOOP("an order at the price \"ten\""), ENTRUSTPLACE, RTSENTRUSTPRICE,
         QStringLiteral("ten")},
        {"place.price-below-zero", QT_TR_NOOP("an order at a price below zero"), ENTRUSTPLACE,
         RTSENTRUSTPRICE, QStringLiteral("-1")},
        {"place.no-quantity", QT_TR_NOOP("an order without \"orderqty\""), ENTRUSTPLACE, RTSENTRUSTQTY,
         leftOut},
        {"place.no-shares", QT_TR_NOOP("an order for no shares"), ENTRUSTPLACE, RTSENTRUSTQTY,
         QStringLiteral("0")},
        {"place.quantity-number", QT_TR_NOOP("an order with a number as \"orderqty\""), ENTRUSTPLACE,
         RTSENTRUSTQTY, quantity},
        {"place.long-number", QT_TR_NOOP("an order with a \"clientno\" of 65 characters"), ENTRUSTPLACE,
         PlaceFields::CLIENTNO, QString(tooLong, u'x')},
        {"cancel.no-number", QT_TR_NOOP("a cancellation without \"ordersno\""), ENTRUSTCANCEL, RTSORDERNO,
         leftOut},
        {"cancel.number-word", QT_TR_NOOP("a cancellation of order \"one\""), ENTRUSTCANCEL, RTSORDERNO,
         QStringLiteral("one")},
        {"cancel.no-day", QT_TR_NOOP("a cancellation without \"orderdate\""), ENTRUSTCANCEL, RTSORDERDATE,
         leftOut},
        {"cancel.unknown", QT_TR_NOOP("a cancellation of an order that is not there"), ENTRUSTCANCEL,
         RTSORDERNO, QStringLiteral("2147483647"), forbidden},
    };
}

CheckCase refusal(const WrongOrder &wrong)
{
    const auto askWrongly = [wrong](CaseRun &run) {
        const bool isNumber = qstrcmp(wrong.key, PlaceFields::CLIENTNO) == 0;
        if (isNumber ? !hasOrderAnd(run, Capability::CLIENTNO) : !hasOrder(run)) {
            return;
        }
        const QJsonObject right = qstrcmp(wrong.command, ENTRUSTPLACE) == 0
                                      ? placing(run, QString())
                                      : ofOrder(run, wrong.command, run.memory().order.number);
        run.askInVain(with(right, wrong.key, wrong.value), wrong.kind == notUnderstood ? wrong.key : nullptr,
                      wrong.kind);
    };
    return {wrong.id, wrong.asks,
            wrong.kind == notUnderstood ? QT_TR_NOOP("a failure of kind 1 whose \"msg\" names the key")
                                        : QT_TR_NOOP("a failure of kind 3"),
            "docs/messages.md#own-keys-of-questions", askWrongly};
}

// Replacing

/// At a cent more; asked again, as a terminal does, until the old order is gone.
void replace(CaseRun &run)
{
    if (!hasOrderAnd(run, Capability::REPLACE)) {
        return;
    }
    PlacedOrder order;
    order.clientNumber = run.settings().mark + QStringLiteral("-replacement");
    QJsonObject question = ofOrder(run, REPLACE, run.memory().order.number);
    question = with(question, RTSENTRUSTPRICE, (*run.settings().orderPrice + Money::ofCents(1)).text());
    question = with(question, PlaceFields::CLIENTNO, order.clientNumber);
    QJsonObject data;
    const bool isDone = holdsInTime(run, [&] {
        data = run.askWell(question).value(QLatin1String(DATA)).toObject();
        return replacementStateOf(field(data, ReplaceFields::REPLACEMENT)) != ReplacementState::Waiting;
    });
    order.number = field(data, ReplaceFields::NEWORDERNO);
    run.expect(isDone && !order.number.isEmpty(),
               translated("no new order comes in the place of the old one"));
    if (!order.number.isEmpty()) {
        run.memory().order = order;
    }
}

void replaceWithoutNumber(CaseRun &run)
{
    if (hasOrderAnd(run, Capability::REPLACE)) {
        const QJsonObject question = ofOrder(run, REPLACE, run.memory().order.number);
        run.askInVain(with(question, RTSENTRUSTPRICE, run.settings().orderPrice->text()),
                      PlaceFields::CLIENTNO, notUnderstood);
    }
}

// Cancelling

void cancel(CaseRun &run)
{
    if (hasOrder(run)) {
        const int known = run.conversation().notifications().size();
        const QJsonObject answer = run.askWell(ofOrder(run, ENTRUSTCANCEL, run.memory().order.number));
        run.expect(!answer.value(QLatin1String(DATA)).toArray().isEmpty(),
                   translated("the user is told nothing of the cancellation"));
        expectTold(run, known, translated("nobody is told of the cancellation"));
    }
}

void findCancelled(CaseRun &run)
{
    if (!hasOrder(run)) {
        return;
    }
    const bool isOver = holdsInTime(run, [&run] {
        const QJsonObject row = listed(run.rows(run.question(ENTRUSTTODAYTRADE)), run.memory().order.number);
        const auto *const status = TradeChart::OrderStatusTable::find(field(row, RTSORDERSTATUS));
        return status != nullptr && !status->isOpen;
    });
    run.expect(isOver, translated("the order is still open"));
}

void cancelAgain(CaseRun &run)
{
    if (hasOrder(run)) {
        run.askInVain(ofOrder(run, ENTRUSTCANCEL, run.memory().order.number), nullptr, forbidden);
    }
}

} // namespace

CheckCases orderCases()
{
    constexpr const char *questions = "docs/trading-module.md#questions-and-answers";
    constexpr const char *placed = "docs/messages.md#a-placed-order";
    constexpr const char *order = "docs/messages.md#an-order";
    CheckCases cases = {
        {"order.placed", QT_TR_NOOP("to buy a hundred shares"),
         QT_TR_NOOP("the order's number, and one order more"), placed, place},
        {"order.listed", QT_TR_NOOP("orders of today, after one was placed"),
         QT_TR_NOOP("a row of the order"), order, findPlaced},
        {"order.open", QT_TR_NOOP("open orders, after one was placed"), QT_TR_NOOP("a row of the order"),
         order, findOpen},
        {"order.again", QT_TR_NOOP("the same with the same \"clientno\""),
         QT_TR_NOOP("the number of the order that is there"), questions, placeAgain},
        {"order.again-other", QT_TR_NOOP("another order with the same \"clientno\""),
         QT_TR_NOOP("a failure of kind 3"), questions, placeOtherUnderTheSameNumber},
        {"order.told", QT_TR_NOOP("to buy a hundred shares more, and to cancel that"),
         QT_TR_NOOP("a notification of the security"), "docs/messages.md#a-notification", hearOfAnother},
    };
    for (const WrongOrder &wrong : wrongOrders()) {
        cases.push_back(refusal(wrong));
    }
    const CheckCases last = {
        {"replace.no-number", QT_TR_NOOP("to replace an order without \"clientno\""),
         QT_TR_NOOP("a failure of kind 1 whose \"msg\" names the key"),
         "docs/messages.md#own-keys-of-questions", replaceWithoutNumber},
        {"replace.asked", QT_TR_NOOP("to replace the order by one at a cent more"),
         QT_TR_NOOP("the new order's number, at once or when asked again"),
         "docs/messages.md#a-replaced-order", replace},
        {"cancel.asked", QT_TR_NOOP("to cancel the order"),
         QT_TR_NOOP("what the user is told, with the question's \"objectId\", and a notification"),
         "docs/messages.md#a-cancellation", cancel},
        {"cancel.listed", QT_TR_NOOP("orders of today, after one was cancelled"),
         QT_TR_NOOP("a row of the order that is not open, in time"), order, findCancelled},
        {"cancel.again", QT_TR_NOOP("to cancel the order again"), QT_TR_NOOP("a failure of kind 3"),
         questions, cancelAgain},
    };
    cases.insert(cases.end(), last.begin(), last.end());
    return cases;
}

} // namespace TradeModule
