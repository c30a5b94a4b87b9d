#include "trademodule/check/ListCases.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/check/CaseRun.h"
#include "trading/ModuleVocabulary.h"
#include "trading/ResultColumns.h"

#include <QCoreApplication>

#include <algorithm>

namespace TradeModule {

using namespace TradeChart::CmdType;
using namespace TradeChart::TradeKeyFields;
using namespace Trading;
using namespace Trading::CmdType;

namespace {

// No day of an account: the first one on which shares were dealt in Shanghai, and the one after.
constexpr int longAgo = 19901219;
constexpr int dayAfter = 19901220;

QString field(const QJsonObject &row, const char *key)
{
    return row.value(QLatin1String(key)).toString();
}

QJsonObject pastTrades(const CaseRun &run, const QString &first, const QString &last)
{
    QJsonObject question = run.question(HISTORYTRADE);
    question.insert(QLatin1String(START), first);
    question.insert(QLatin1String(END), last);
    return question;
}

QJsonObject pastTrades(const CaseRun &run)
{
    return pastTrades(run, run.settings().from.text(), run.settings().to.text());
}

QJsonObject ordersOf(const CaseRun &run, int day)
{
    QJsonObject question = run.question(ENTRUSTHISTORYTRADE);
    question.insert(QLatin1String(DATE), day);
    return question;
}

/// An index, which has a code like a share and belongs to nobody. Terminals ask for it to learn whether
/// somebody answers.
SecurityId indexOfShanghai()
{
    return {QStringLiteral("000001"), Market::Shanghai};
}

SecurityId shareOfOtherMarket(const SecurityId &security)
{
    return security.market == Market::Shanghai ? SecurityId{QStringLiteral("000001"), Market::Shenzhen}
                                               : SecurityId{QStringLiteral("600000"), Market::Shanghai};
}

void skipWithout(const QJsonArray &rows, CaseRun *run)
{
    if (rows.isEmpty()) {
        run->skip(
            translated("there is no such row; name another security with --security, other days with --from "
                       "and --to"));
    }
}

// The cost

void askCost(CaseRun &run)
{
    const QJsonObject answer = run.askWell(run.question(HOLDERCOSTPRICE));
    if (field(answer.value(QLatin1String(DATA)).toObject(), COSTPRICE).isEmpty() && run.faults().isEmpty()) {
        run.skip(translated("nothing is held of it; name another security with --security"));
    }
}

void askCostOfOtherMarket(CaseRun &run)
{
    run.askWell(CaseRun::question(HOLDERCOSTPRICE, shareOfOtherMarket(run.settings().security)));
}

void askCostOfIndex(CaseRun &run)
{
    const QJsonObject answer = run.askWell(CaseRun::question(HOLDERCOSTPRICE, indexOfShanghai()));
    const QString cost = field(answer.value(QLatin1String(DATA)).toObject(), COSTPRICE);
    run.expect(cost.isEmpty() || cost == QLatin1String("nan"),
               translated("nobody holds it, but its cost is told"));
}

// Trades

void askToday(CaseRun &run)
{
    skipWithout(run.rows(run.question(TODAYTRADE)), &run);
}

void askDayOfToday(CaseRun &run)
{
    const QString today = TradingDate::today().text();
    run.expectOfEach(
        run.rows(run.question(TODAYTRADE)),
        [&today](const QJsonObject &row) {
            const QString dealt = field(row, RTSDATE);
            return field(row, RTSORDERDATE) == today && (dealt.isEmpty() || dealt == today);
        },
        translated("a trade of today has another day"));
}

void askTodayOfIndex(CaseRun &run)
{
    const QJsonArray rows = run.rows(CaseRun::question(TODAYTRADE, indexOfShanghai()));
    run.expect(rows.isEmpty(), translated("nobody can deal in it, but there are trades"));
}

void askPast(CaseRun &run)
{
    skipWithout(run.rows(pastTrades(run)), &run);
}

void askPastInside(CaseRun &run)
{
    const QString first = run.settings().from.text();
    const QString last = run.settings().to.text();
    run.expectOfEach(
        run.rows(pastTrades(run)),
        [&](const QJsonObject &row) { return field(row, RTSDATE) >= first && field(row, RTSDATE) <= last; },
        translated("a trade is of another day than was asked for"));
}

void askPastWithoutToday(CaseRun &run)
{
    const QString today = TradingDate::today().text();
    run.expectOfEach(
        run.rows(pastTrades(run, run.settings().from.text(), today)),
        [&today](const QJsonObject &row) { return field(row, RTSDATE) != today; },
        translated("a trade of today is among the past ones: charts show it twice"));
}

/// Times may lack their first digit.
QString momentOf(const QJsonObject &trade)
{
    constexpr int digits = 8;
    return field(trade, RTSDATE) + field(trade, RTSMATCHTIME).rightJustified(digits, u'0');
}

void askPastInOrder(CaseRun &run)
{
    QString before;
    run.expectOfEach(
        run.rows(pastTrades(run)),
        [&before](const QJsonObject &row) {
            const QString moment = momentOf(row);
            const bool isLater = moment >= before;
            before = moment;
            return isLater;
        },
        translated("trades do not come oldest first"));
}

void askOneDay(CaseRun &run)
{
    const QJsonArray all = run.rows(pastTrades(run));
    if (all.isEmpty()) {
        return skipWithout(all, &run);
    }
    const QString day = field(all.last().toObject(), RTSDATE);
    run.expect(!run.rows(pastTrades(run, day, day)).isEmpty(),
               translated("a day's trades do not come when the day is asked for alone"));
}

void askHalves(CaseRun &run)
{
    const TradingDate first = run.settings().from;
    const TradingDate last = run.settings().to;
    const auto days = static_cast<int>(first.calendarDate().daysTo(last.calendarDate()));
    const TradingDate middle = first.plusDays(days / 2);
    const auto whole = run.rows(pastTrades(run)).size();
    const auto older = run.rows(pastTrades(run, first.text(), middle.text())).size();
    const auto newer = run.rows(pastTrades(run, middle.plusDays(1).text(), last.text())).size();
    run.expect(
        whole == older + newer,
        translated("%1 trades come at once, but %2 and %3 in two halves").arg(whole).arg(older).arg(newer));
}

void askLongAgo(CaseRun &run)
{
    const QJsonArray rows = run.rows(pastTrades(run, QString::number(longAgo), QString::number(dayAfter)));
    run.expect(rows.isEmpty(), translated("there are trades of days on which the account had none"));
}

void askBackwards(CaseRun &run)
{
    const QJsonArray rows = run.rows(pastTrades(run, run.settings().to.text(), run.settings().from.text()));
    run.expect(rows.isEmpty() || run.settings().from == run.settings().to,
               translated("there are trades between a day and an earlier one"));
}

// Orders

void askOrdersOfToday(CaseRun &run)
{
    skipWithout(run.rows(run.question(ENTRUSTTODAYTRADE)), &run);
}

void askDayOfOrders(CaseRun &run)
{
    const QString today = TradingDate::today().text();
    run.expectOfEach(
        run.rows(run.question(ENTRUSTTODAYTRADE)),
        [&today](const QJsonObject &row) { return field(row, RTSORDERDATE) == today; },
        translated("an order of today has another day"));
}

/// Shares are dealt, cancelled, or still open: never more than were ordered.
void askSumOfOrders(CaseRun &run)
{
    run.expectOfEach(
        run.rows(run.question(ENTRUSTTODAYTRADE)),
        [](const QJsonObject &row) {
            return field(row, RTSMATCHQTY).toLongLong() + field(row, RTSCANCELQTY).toLongLong() <=
                   field(row, RTSENTRUSTQTY).toLongLong();
        },
        translated("more shares of an order are dealt and cancelled than were ordered"));
}

void askOrdersOfADay(CaseRun &run)
{
    const QString day = run.settings().to.text();
    const QJsonArray rows = run.rows(ordersOf(run, run.settings().to.number()));
    run.expectOfEach(
        rows, [&day](const QJsonObject &row) { return field(row, RTSORDERDATE) == day; },
        translated("an order is of another day than was asked for"));
    skipWithout(rows, &run);
}

void askOrdersLongAgo(CaseRun &run)
{
    run.expect(run.rows(ordersOf(run, longAgo)).isEmpty(),
               translated("there are orders of a day on which the account had none"));
}

// What not every module knows

/// The answer; a module that has never heard of the command says so, and there is nothing to look at.
QJsonObject askIfKnown(CaseRun &run, const QJsonObject &question)
{
    constexpr int notUnderstood = 1;
    const QJsonObject answer = run.ask(question);
    const bool isFailure = answer.value(QLatin1String(SUCCESS)) == QJsonValue(false);
    if (isFailure && answer.value(QLatin1String(ERRCODE)).toInt() == notUnderstood) {
        run.skip(translated("this module does not know the command"));
    } else {
        run.expect(!isFailure, translated("it is refused: %1").arg(field(answer, MSG)));
    }
    return answer;
}

void askAccount(CaseRun &run)
{
    const QJsonObject account = askIfKnown(run, {{QLatin1String(CMD), QLatin1String(ACCOUNTINFO)}})
                                    .value(QLatin1String(DATA))
                                    .toObject();
    run.expect(field(account, AccountFields::AVAILABLE).toDouble() <=
                   field(account, AccountFields::CASH).toDouble(),
               translated("more cash is available than there is"));
    run.expectOfEach(
        account.value(QLatin1String(AccountFields::POSITIONS)).toArray(),
        [](const QJsonObject &row) {
            return field(row, AccountFields::SELLABLE).toLongLong() <=
                   field(row, AccountFields::QTY).toLongLong();
        },
        translated("more shares can be sold than are held"));
}

/// A list is asked for in all its forms.
void askResults(CaseRun &run)
{
    for (const ResultGroup group : resultGroups()) {
        const QJsonObject answer = askIfKnown(run, {{QLatin1String(CMD), QLatin1String(RESULTS)},
                                                    {QLatin1String(ResultsFields::BY), wordOf(group)}});
        const QJsonObject data = answer.value(QLatin1String(DATA)).toObject();
        const int rows = data.value(QLatin1String(ResultsFields::ROWS)).toArray().size();
        run.expect(rows == std::min(field(data, ResultsFields::COUNT).toInt(), mostResultRows),
                   translated("a list has other rows than its \"count\" says"));
    }
}

/// What has a cost is held.
void askPositionOfHolding(CaseRun &run)
{
    const QJsonObject cost = run.askWell(run.question(HOLDERCOSTPRICE)).value(QLatin1String(DATA)).toObject();
    const QJsonObject question{{QLatin1String(CMD), QLatin1String(ACCOUNTINFO)}};
    const QJsonObject account = askIfKnown(run, question).value(QLatin1String(DATA)).toObject();
    const QJsonArray positions = account.value(QLatin1String(AccountFields::POSITIONS)).toArray();
    const auto isAsked = [&run](const QJsonValue &row) {
        return field(row.toObject(), STKCODE) == run.settings().security.code;
    };
    run.expect(account.isEmpty() || field(cost, COSTPRICE).isEmpty() ||
                   std::any_of(positions.begin(), positions.end(), isAsked),
               translated("a security has a cost, but is no position"));
}

/// What the presence promises must be answered.
template <const char *const *command, const char *const *capability>
void askPromised(CaseRun &run)
{
    if (run.isSaidToKnow(*capability)) {
        run.rows(run.question(*command));
    } else {
        run.skip(translated("its presence does not say \"%1\"").arg(QLatin1String(*capability)));
    }
}

} // namespace

CheckCases listCases()
{
    constexpr const char *answered = QT_TR_NOOP("an answer whose keys are as the guide says");
    constexpr const char *questions = "docs/trading-module.md#questions-and-answers";
    return {
        {"cost.asked", QT_TR_NOOP("the cost of a holding"), answered, "docs/messages.md#a-holding", askCost},
        {"cost.other-market", QT_TR_NOOP("the cost of a share of the other market"),
         QT_TR_NOOP("an answer with that market's number"), "docs/messages.md#every-answer",
         askCostOfOtherMarket},
        {"cost.index",
         QT_TR_NOOP("the cost of the index 000001 of Shanghai, by which terminals find a module"),
         QT_TR_NOOP("an answer without a cost, or with \"nan\""), "docs/messages.md#own-keys-of-answers",
         askCostOfIndex},
        {"today.asked", QT_TR_NOOP("trades of today"), answered, "docs/messages.md#a-trade-of-today",
         askToday},
        {"today.day", QT_TR_NOOP("trades of today"), QT_TR_NOOP("rows with today's date, in Shanghai"),
         "docs/messages.md#a-trade-of-today", askDayOfToday},
        {"today.index", QT_TR_NOOP("trades of today in an index"), QT_TR_NOOP("an empty list"),
         "docs/messages.md#commands", askTodayOfIndex},
        {"history.asked", QT_TR_NOOP("past trades"), answered, "docs/messages.md#a-trade-of-a-past-day",
         askPast},
        {"history.inside", QT_TR_NOOP("past trades"), QT_TR_NOOP("rows of the days that were asked for"),
         "docs/messages.md#commands", askPastInside},
        {"history.not-today", QT_TR_NOOP("past trades up to today"), QT_TR_NOOP("no row of today"), questions,
         askPastWithoutToday},
        {"history.oldest-first", QT_TR_NOOP("past trades"), QT_TR_NOOP("rows oldest first"),
         "docs/messages.md#commands", askPastInOrder},
        {"history.one-day", QT_TR_NOOP("past trades of one day that has some"),
         QT_TR_NOOP("rows of that day"), "docs/messages.md#own-keys-of-questions", askOneDay},
        {"history.halves", QT_TR_NOOP("past trades, and those of both halves of the time"),
         QT_TR_NOOP("the same trades"), "docs/messages.md#own-keys-of-questions", askHalves},
        {"history.long-ago", QT_TR_NOOP("past trades of days without any"), QT_TR_NOOP("an empty list"),
         "docs/messages.md#commands", askLongAgo},
        {"history.backwards", QT_TR_NOOP("past trades from a day to an earlier one"),
         QT_TR_NOOP("an empty list"), "docs/messages.md#commands", askBackwards},
        {"orders.asked", QT_TR_NOOP("orders of today"), answered, "docs/messages.md#an-order",
         askOrdersOfToday},
        {"orders.day", QT_TR_NOOP("orders of today"), QT_TR_NOOP("rows with today's date, in Shanghai"),
         "docs/messages.md#an-order", askDayOfOrders},
        {"orders.sum", QT_TR_NOOP("orders of today"),
         QT_TR_NOOP("rows of which no more is dealt and cancelled than was ordered"),
         "docs/messages.md#an-order", askSumOfOrders},
        {"orders.past", QT_TR_NOOP("orders of a day"), QT_TR_NOOP("rows of that day"),
         "docs/messages.md#an-order", askOrdersOfADay},
        {"orders.long-ago", QT_TR_NOOP("orders of a day without any"), QT_TR_NOOP("an empty list"),
         "docs/messages.md#commands", askOrdersLongAgo},
        {"account.asked", QT_TR_NOOP("cash and positions"),
         QT_TR_NOOP("an answer as the guide says, or a failure that does not know the command"),
         "docs/messages.md#an-account", askAccount},
        {"account.position", QT_TR_NOOP("cash and positions, and the cost of a holding"),
         QT_TR_NOOP("a position of what has a cost"), "docs/messages.md#an-account", askPositionOfHolding},
        {"results.asked", QT_TR_NOOP("what was earned, by sale, trip, security, month and year"),
         QT_TR_NOOP("an answer as the guide says, or a failure that does not know the command"),
         "docs/messages.md#a-part-of-a-list-of-results", askResults},
        {"openorders.asked", QT_TR_NOOP("open orders, where the presence says that the module knows them"),
         answered, "docs/messages.md#an-order", askPromised<&OPENORDERS, &Capability::OPENORDERS>},
        {"actions.asked", QT_TR_NOOP("dividends, where the presence says that the module knows them"),
         answered, "docs/messages.md#what-was-received-on-a-day",
         askPromised<&CORPORATEACTIONS, &Capability::ACTIONS>},
    };
}

} // namespace TradeModule
