#include "trademodule/bus/TradeAnswers.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/bus/AnswerMessage.h"
#include "trademodule/bus/ResultRows.h"
#include "trademodule/bus/TradeRequest.h"
#include "trademodule/bus/TradeRows.h"
#include "trademodule/ledger/AccountHistory.h"
#include "trademodule/results/ReceivedActions.h"
#include "trading/ModuleVocabulary.h"

#include <QElapsedTimer>
#include <QJsonArray>

#include <algorithm>

namespace TradeModule {

using namespace TradeChart::TradeKeyFields;
using namespace Trading;

namespace {

constexpr int costDecimals = 3;

QLatin1String key(const char *name)
{
    return QLatin1String(name);
}

QString costText(const Holding &holding)
{
    const std::optional<double> cost = holding.costPrice();
    return cost ? QString::number(*cost, 'f', costDecimals) : AnswerMessage::noCost;
}

QJsonObject rowOf(const Position &position, qint64 sellable)
{
    return {
        {key(STKCODE), position.security.code},
        {key(STKNAME), position.name},
        {key(MARKET), marketNumber(position.security.market)},
        {key(AccountFields::QTY), QString::number(position.holding.quantity())},
        {key(AccountFields::SELLABLE), QString::number(sellable)},
        {key(COSTPRICE), costText(position.holding)},
    };
}

QJsonObject rowOf(const ReceivedAction &action)
{
    return {
        {key(ActionFields::DATE), action.date.text()},
        {key(ActionFields::HELD), QString::number(action.held)},
        {key(ActionFields::CASH), action.cash.text()},
        {key(ActionFields::BONUS), QString::number(action.bonus)},
    };
}

/// Charts file orders under the clock's today, also those of a practised day, which is played as today.
Orders asOfToday(Orders orders)
{
    for (Order &order : orders) {
        order.date = TradingDate::today();
    }
    return orders;
}

QJsonObject rowOf(const Replacement &replacement)
{
    QJsonObject row{
        {key(RTSORDERNO), QString::number(replacement.orderNumber)},
        {key(ReplaceFields::REPLACEMENT), wordOf(replacement.state)},
        {key(ReplaceFields::REASON), replacement.reason},
    };
    if (replacement.newOrderNumber > 0) {
        row[key(ReplaceFields::NEWORDERNO)] = QString::number(replacement.newOrderNumber);
    }
    return row;
}

/// Runs what the rules of the market may refuse; then the answer says why.
template <typename Action>
void refusable(AnswerMessage *answer, Action action)
{
    try {
        action();
    } catch (const LedgerError &) {
        throw;
    } catch (const Error &error) {
        answer->fail(AnswerMessage::Refused, error.reason());
    }
}

} // namespace

struct TradeAnswers::Command
{
    const char *name;
    Answer answer;
    /// Until the ledger changes: nothing but the ledger and the day tells it. A single row is read as quickly
    /// as it is found out whether something has changed.
    bool isKept = false;
    bool isOfLedger = true; ///< false: answered also while the ledger cannot be used
};

const TradeAnswers::Command *TradeAnswers::findCommand(const QString &name)
{
    static const Command commands[] = {
        {TradeChart::CmdType::HOLDERCOSTPRICE, &TradeAnswers::answerCost},
        {TradeChart::CmdType::TODAYTRADE, &TradeAnswers::answerToday, true},
        {TradeChart::CmdType::HISTORYTRADE, &TradeAnswers::answerHistory, true},
        {TradeChart::CmdType::ENTRUSTTODAYTRADE, &TradeAnswers::answerTodaysOrders, true},
        {TradeChart::CmdType::ENTRUSTHISTORYTRADE, &TradeAnswers::answerPastOrders, true},
        {TradeChart::CmdType::ENTRUSTCANCEL, &TradeAnswers::cancel},
        {CmdType::ENTRUSTPLACE, &TradeAnswers::place},
        {CmdType::REPLACE, &TradeAnswers::replace},
        {CmdType::ACCOUNTINFO, &TradeAnswers::answerAccount},
        {CmdType::OPENORDERS, &TradeAnswers::answerOpenOrders},
        {CmdType::RESULTS, &TradeAnswers::answerResults},
        {CmdType::COSTMETHOD, &TradeAnswers::setCostMethod},
        {CmdType::CORPORATEACTIONS, &TradeAnswers::answerActions},
        {CmdType::MODULESTATUS, &TradeAnswers::answerStatus, false, false},
    };
    const auto *found =
        std::find_if(std::begin(commands), std::end(commands),
                     [&name](const Command &command) { return name == QLatin1String(command.name); });
    return found == std::end(commands) ? nullptr : found;
}

QByteArray TradeAnswers::answer(const QJsonObject &question)
{
    const TradeRequest request(question);
    if (const QString language = request.language(); m_speak && !language.isEmpty()) {
        m_speak(language);
    }
    const Command *command = findCommand(request.field(CMD).toString());
    AnswerMessage answer(request);
    QElapsedTimer taken;
    taken.start();
    answerKnown(command, question, &answer);
    const std::chrono::nanoseconds elapsed(taken.nsecsElapsed());
    m_record.answered(command != nullptr ? key(command->name) : key(ServiceRecord::otherCommands),
                      answer.isFailure(), std::chrono::duration_cast<std::chrono::microseconds>(elapsed));
    if (answer.isFailure()) {
        m_tellRefusal(request, answer.reason());
    }
    return answer.toJson();
}

void TradeAnswers::answerKnown(const Command *command, const QJsonObject &question, AnswerMessage *answer)
{
    try {
        if (command == nullptr) {
            throw Error(translated("\"%1\" is \"%2\", which this trading module does not know")
                            .arg(key(CMD), TradeRequest(question).command()));
        }
        if (command->isOfLedger) {
            m_ledger->database()->refuseReplacedFile();
        }
        run(*command, question, answer);
    } catch (const LeaseLost &) {
        throw;
    } catch (const LedgerError &error) {
        answer->fail(AnswerMessage::LedgerFailed, error.reason());
    } catch (const Error &error) {
        answer->fail(AnswerMessage::NotUnderstood, error.reason());
    }
}

void TradeAnswers::run(const Command &command, const QJsonObject &question, AnswerMessage *answer)
{
    const TradeRequest request(question);
    if (!command.isKept) {
        (this->*command.answer)(request, answer);
        return;
    }
    answer->set(m_kept.of(question, [&] {
        AnswerMessage read;
        (this->*command.answer)(request, &read);
        return read.content();
    }));
}

void TradeAnswers::answerCost(const TradeRequest &request, AnswerMessage *answer)
{
    const SecurityId security = request.security();
    const Holding holding = m_ledger->holding(security);
    QJsonObject data{{key(STKCODE), security.code}, {key(MARKET), marketNumber(security.market)}};
    if (holding.costPrice()) {
        data[key(COSTPRICE)] = costText(holding);
    }
    answer->set(COSTPRICE, costText(holding));
    answer->set(CostFields::COSTMETHOD, wordOf(holding.method()));
    answer->set(DATA, data);
}

/// Of a practised day they have its date: charts of days mark it there, and no other answer has them.
void TradeAnswers::answerToday(const TradeRequest &request, AnswerMessage *answer)
{
    const TradingDate day = m_ledger->today();
    answer->setRows(rowsOf(m_ledger->trades(request.security(), {day, day})));
}

void TradeAnswers::answerHistory(const TradeRequest &request, AnswerMessage *answer)
{
    const DateRange asked = request.days();
    const DateRange past{asked.first, std::min(asked.last, m_ledger->today().plusDays(-1))};
    answer->setRows(rowsOf(m_ledger->trades(request.security(), past)));
}

void TradeAnswers::answerTodaysOrders(const TradeRequest &request, AnswerMessage *answer)
{
    answer->setRows(rowsOf(asOfToday(m_orders.ofDay(m_orders.today(), request.security()))));
}

void TradeAnswers::answerPastOrders(const TradeRequest &request, AnswerMessage *answer)
{
    answer->setRows(rowsOf(m_orders.ofDay(request.day(), request.security())));
}

void TradeAnswers::answerOpenOrders(const TradeRequest & /*request*/, AnswerMessage *answer)
{
    Orders open = m_exchange->openOrders();
    for (Order &order : open) {
        order.date = order.date == m_orders.today() ? TradingDate::today() : order.date; // see asOfToday()
    }
    answer->setRows(rowsOf(open));
}

void TradeAnswers::answerAccount(const TradeRequest & /*request*/, AnswerMessage *answer)
{
    QJsonArray positions;
    const Orders open = m_exchange->openOrders();
    const auto bought = m_orders.boughtOn(m_orders.today());
    for (const Position &position : m_ledger->positions()) {
        const SecurityId &security = position.security;
        positions.append(rowOf(position, m_exchange->sellable(security, position.holding.quantity(),
                                                              bought.value(security), open)));
    }
    answer->set(CostFields::COSTMETHOD, wordOf(m_ledger->costMethod()));
    answer->set(DATA, QJsonObject{
                          {key(AccountFields::CASH), m_orders.cash().text()},
                          {key(AccountFields::AVAILABLE), m_exchange->spendable(open).text()},
                          {key(AccountFields::POSITIONS), positions},
                      });
}

void TradeAnswers::answerResults(const TradeRequest &request, AnswerMessage *answer)
{
    const KeptResults::Wish wish = request.results();
    const qint64 first = request.firstRow();
    const int most = request.mostRows();
    const qint64 state = m_results.bringUpToDate();
    answer->set(CostFields::COSTMETHOD, wordOf(m_results.method()));
    answer->setRows(
        resultData(wish, first, m_results.part(wish, first, most), state, m_results.incompleteCodes()));
}

void TradeAnswers::answerActions(const TradeRequest &request, AnswerMessage *answer)
{
    const SecurityId asked = request.security();
    AccountHistory history(m_ledger->database());
    ReceivedActions received;
    for (const KnownSecurity &known : history.securities(asked.code)) {
        if (known.security == asked) {
            history.visit(known, [&received](const AccountEvent &event) { received.take(event); });
        }
    }
    QJsonArray rows;
    for (const ReceivedAction &action : received.all()) {
        rows.append(rowOf(action));
    }
    answer->set(DATA, rows);
}

void TradeAnswers::answerStatus(const TradeRequest & /*request*/, AnswerMessage *answer)
{
    ModuleStatus status = m_record.status();
    try {
        m_ledger->database()->refuseReplacedFile();
        status.openOrders = m_exchange->openOrders().size();
    } catch (const LeaseLost &) {
        throw;
    } catch (const LedgerError &error) {
        status.ledgerTrouble = error.reason();
    }
    answer->set(DATA, status.toJson());
}

void TradeAnswers::setCostMethod(const TradeRequest &request, AnswerMessage *answer)
{
    const CostMethod method = request.costMethod();
    m_ledger->setCostMethod(method);
    answer->set(DATA, QJsonObject{{key(CostFields::COSTMETHOD), wordOf(method)}});
    for (const Position &position : m_tellOfCost ? m_ledger->positions() : QVector<Position>()) {
        m_tellOfCost(position.security);
    }
}

/// As the ledger has it: charts call a practised day today.
TradingDate TradeAnswers::dayOfOrder(const TradeRequest &request) const
{
    const TradingDate asked = request.orderDate();
    return asked == TradingDate::today() ? m_orders.today() : asked;
}

void TradeAnswers::cancel(const TradeRequest &request, AnswerMessage *answer)
{
    const TradingDate date = dayOfOrder(request);
    const qint64 number = request.orderNumber();
    m_dealFirst();
    refusable(answer, [&] {
        m_exchange->cancel(date, number);
        const QString done = translated("the cancellation of order %1 is submitted").arg(number);
        answer->set(DATA, QJsonArray{QJsonObject{{key(MSGOK), done}}});
    });
}

void TradeAnswers::place(const TradeRequest &request, AnswerMessage *answer)
{
    const SecurityId security = request.security();
    const Direction direction = request.direction();
    const Money price = request.orderPrice();
    const qint64 quantity = request.orderQuantity();
    const QString clientNumber = request.clientNumber();
    m_dealFirst();
    refusable(answer, [&] {
        const Order order = m_exchange->place(security, direction, price, quantity, clientNumber);
        const QString number = QString::number(order.number);
        answer->set(RTSORDERNO, number);
        answer->set(DATA, QJsonObject{{key(RTSORDERNO), number}});
    });
}

void TradeAnswers::replace(const TradeRequest &request, AnswerMessage *answer)
{
    const TradingDate date = dayOfOrder(request);
    const qint64 number = request.orderNumber();
    const Money price = request.orderPrice();
    const QString clientNumber = request.neededClientNumber();
    m_dealFirst();
    refusable(answer,
              [&] { answer->set(DATA, rowOf(m_exchange->replace(date, number, price, clientNumber))); });
}

namespace {

QJsonObject notification(const SecurityId &security, const QString &orderNo, const QString &status)
{
    return {
        {key(STKCODE), security.code},
        {key(MARKET), marketNumber(security.market)},
        {key(RTSORDERNO), orderNo},
        {key(RTSORDERSTATUS), status},
    };
}

} // namespace

QJsonObject changeNotification(const Order &changed)
{
    return notification(changed.security, QString::number(changed.number), changed.status);
}

QJsonObject changeNotification(const Execution &newest)
{
    QJsonObject change = notification(newest.security, newest.orderNo, key(TradeChart::OrderStatus::Dealed));
    change[key(RTSDATE)] = newest.date.text();
    return change;
}

QJsonObject changeNotification(const SecurityId &held)
{
    return notification(held, QString(), key(TradeChart::OrderStatus::Dealed));
}

} // namespace TradeModule
