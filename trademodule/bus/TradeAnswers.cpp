#include "trademodule/bus/TradeAnswers.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/Error.h"
#include "trademodule/ExchangeTime.h"
#include "trademodule/bus/BusNames.h"
#include "trademodule/bus/TradeRequest.h"

#include <algorithm>

namespace TradeModule {

using namespace TradeChart::TradeKeyFields;

namespace {

constexpr int CostDecimals = 3;

QLatin1String key(const char *name)
{
    return QLatin1String(name);
}

/// Dates as eight digits, times as hhmmsscc with leading zeros.
QString eightDigits(int number)
{
    return QString::number(number).rightJustified(8, QLatin1Char('0'));
}

QJsonObject rowOf(const Execution &trade)
{
    const bool isBuy = trade.side == Side::Buy;
    const QString date = eightDigits(trade.date);
    const QString time = eightDigits(trade.time);
    return {
        {key(STKCODE), trade.security.code},
        {key(MARKET), marketNumber(trade.security.market)},
        {key(RTSBSFLAG), key(isBuy ? TradeChart::BSFlag::BUY : TradeChart::BSFlag::SELL)},
        {key(RTSORDERNO), trade.orderNo},
        {key(RTSORDERDATE), date},
        {key(RTSENTRUSTTIME), time},
        {key(RTSDATE), date},
        {key(RTSMATCHTIME), time},
        {key(RTSMATCHPRICE), trade.price.text()},
        {key(RTSMATCHQTY), QString::number(trade.quantity)},
        {key(RTSMATCHAMT), trade.amount.text()},
        {key(BUY), isBuy},
        {key(DATE), date},
        {key(PRICE), trade.price.yuan()},
        {key(VOL), trade.quantity},
    };
}

/// Direction codes of orders; trades have letters instead.
QString directionOf(Side side)
{
    return side == Side::Buy ? QStringLiteral("0B") : QStringLiteral("0S");
}

QJsonObject rowOf(const Order &order)
{
    const QString date = eightDigits(order.date);
    return {
        {key(STKCODE), order.security.code},
        {key(STKNAME), order.securityName},
        {key(MARKET), marketNumber(order.security.market)},
        {key(RTSBSFLAG), directionOf(order.side)},
        {key(RTSORDERSTATUS), order.status},
        {key(RTSFUNDID), QStringLiteral("paper")},
        {key(RTSORDERNO), QString::number(order.number)},
        {key(RTSORDERDATE), date},
        {key(RTSENTRUSTDATE), date},
        {key(RTSENTRUSTTIME), eightDigits(order.time)},
        {key(RTSENTRUSTPRICE), order.price.text()},
        {key(RTSENTRUSTQTY), QString::number(order.quantity)},
        {key(RTSMATCHQTY), QString::number(order.matchedQuantity)},
        {key(RTSMATCHAMT), order.matchedAmount.text()},
        {key(RTSCANCELQTY), QString::number(order.cancelledQuantity)},
        {key(RTSCANCELFLAG), QStringLiteral("0")},
    };
}

template <typename Record>
QJsonArray rowsOf(const QVector<Record> &records)
{
    QJsonArray rows;
    for (const Record &record : records) {
        rows.append(rowOf(record));
    }
    return rows;
}

QJsonObject failed(QJsonObject answer, TradeAnswers::ErrorCode code, const QString &reason)
{
    answer[key(SUCCESS)] = false;
    answer[key(ERRCODE)] = code;
    answer[key(MSG)] = reason;
    return answer;
}

/// Runs what the rules of the market may refuse; then the answer says why.
template <typename Action>
void refusable(QJsonObject *answer, Action action)
{
    try {
        action();
    } catch (const LedgerError &) {
        throw;
    } catch (const Error &error) {
        *answer = failed(*answer, TradeAnswers::Refused, error.reason());
    }
}

/// The envelope: what the question named comes back, the market as its number.
QJsonObject envelopeFor(const TradeRequest &request)
{
    QJsonObject envelope;
    for (const char *const echoed : {CMD, STKCODE, SCREENID, OBJECTID}) {
        if (!request.field(echoed).isUndefined()) {
            envelope[key(echoed)] = request.field(echoed);
        }
    }
    const auto market = marketOfLetters(request.field(MARKET).toString());
    envelope[key(MARKET)] = market ? marketNumber(*market) : QStringLiteral("");
    envelope[key(SUCCESS)] = true;
    envelope[key(ERRCODE)] = TradeAnswers::NoError;
    envelope[key(MSG)] = QStringLiteral("");
    return envelope;
}

} // namespace

struct TradeAnswers::Command
{
    const char *name;
    Answer answer;
};

const TradeAnswers::Command *TradeAnswers::findCommand(const QString &name)
{
    static const Command commands[] = {
        {TradeChart::CmdType::HOLDERCOSTPRICE, &TradeAnswers::answerCost},
        {TradeChart::CmdType::TODAYTRADE, &TradeAnswers::answerToday},
        {TradeChart::CmdType::HISTORYTRADE, &TradeAnswers::answerHistory},
        {TradeChart::CmdType::ENTRUSTTODAYTRADE, &TradeAnswers::answerTodaysOrders},
        {TradeChart::CmdType::ENTRUSTHISTORYTRADE, &TradeAnswers::answerPastOrders},
        {TradeChart::CmdType::ENTRUSTCANCEL, &TradeAnswers::cancel},
        {EntrustPlace, &TradeAnswers::place},
    };
    const auto *found =
        std::find_if(std::begin(commands), std::end(commands),
                     [&name](const Command &command) { return name == QLatin1String(command.name); });
    return found == std::end(commands) ? nullptr : found;
}

QJsonObject TradeAnswers::answer(const QJsonObject &question)
{
    const TradeRequest request(question);
    QJsonObject answer = envelopeFor(request);
    try {
        const Command *command = findCommand(request.command());
        if (command == nullptr) {
            throw Error(QStringLiteral("\"%1\" is \"%2\", which this trading module does not know")
                            .arg(key(CMD), request.command()));
        }
        (this->*command->answer)(request, &answer);
        return answer;
    } catch (const LedgerError &error) {
        return failed(envelopeFor(request), LedgerFailed, error.reason());
    } catch (const Error &error) {
        return failed(envelopeFor(request), NotUnderstood, error.reason());
    }
}

QJsonObject TradeAnswers::refusal(const QString &reason)
{
    return failed(QJsonObject(), NotUnderstood, reason);
}

void TradeAnswers::answerCost(const TradeRequest &request, QJsonObject *answer)
{
    const Security security = request.security();
    const std::optional<double> cost = m_ledger->holding(security).costPrice();
    QJsonObject data{{key(STKCODE), security.code}, {key(MARKET), marketNumber(security.market)}};
    const QString text = cost ? QString::number(*cost, 'f', CostDecimals) : QStringLiteral("nan");
    if (cost) {
        data[key(COSTPRICE)] = text;
    }
    (*answer)[key(COSTPRICE)] = text;
    (*answer)[key(DATA)] = data;
}

void TradeAnswers::answerToday(const TradeRequest &request, QJsonObject *answer)
{
    const int day = today();
    (*answer)[key(DATA)] = rowsOf(m_ledger->trades(request.security(), {day, day}));
}

void TradeAnswers::answerHistory(const TradeRequest &request, QJsonObject *answer)
{
    const DateRange asked = request.days();
    const DateRange past{asked.first, std::min(asked.last, today() - 1)};
    (*answer)[key(DATA)] = rowsOf(m_ledger->trades(request.security(), past));
}

void TradeAnswers::answerTodaysOrders(const TradeRequest &request, QJsonObject *answer)
{
    (*answer)[key(DATA)] = rowsOf(m_orders.ofDay(today(), request.security()));
}

void TradeAnswers::answerPastOrders(const TradeRequest &request, QJsonObject *answer)
{
    (*answer)[key(DATA)] = rowsOf(m_orders.ofDay(request.day(), request.security()));
}

void TradeAnswers::cancel(const TradeRequest &request, QJsonObject *answer)
{
    const int date = request.orderDate();
    const qint64 number = request.orderNumber();
    refusable(answer, [&] {
        m_exchange->cancel(date, number);
        const QString done = QStringLiteral("撤单委托已提交，委托编号 %1").arg(number);
        (*answer)[key(DATA)] = QJsonArray{QJsonObject{{key(MSGOK), done}}};
    });
}

void TradeAnswers::place(const TradeRequest &request, QJsonObject *answer)
{
    const Security security = request.security();
    const Side side = request.side();
    const Money price = request.orderPrice();
    const qint64 quantity = request.orderQuantity();
    refusable(answer, [&] {
        const Order order = m_exchange->place(security, side, price, quantity);
        (*answer)[key(RTSORDERNO)] = QString::number(order.number);
        (*answer)[key(DATA)] = QJsonObject{{key(RTSORDERNO), QString::number(order.number)}};
    });
}

namespace {

QJsonObject notification(const Security &security, const QString &orderNo, const QString &status)
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
    return notification(newest.security, newest.orderNo, key(TradeChart::OrderStatus::Dealed));
}

} // namespace TradeModule
