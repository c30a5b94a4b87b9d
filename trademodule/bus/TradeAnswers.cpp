#include "trademodule/bus/TradeAnswers.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/Error.h"
#include "trademodule/ExchangeTime.h"
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

QJsonArray rowsOf(const Executions &trades)
{
    QJsonArray rows;
    for (const Execution &trade : trades) {
        rows.append(rowOf(trade));
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

void TradeAnswers::answerCost(const TradeRequest &request, QJsonObject *answer) const
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

void TradeAnswers::answerToday(const TradeRequest &request, QJsonObject *answer) const
{
    const int day = today();
    (*answer)[key(DATA)] = rowsOf(m_ledger->trades(request.security(), {day, day}));
}

void TradeAnswers::answerHistory(const TradeRequest &request, QJsonObject *answer) const
{
    const DateRange asked = request.days();
    const DateRange past{asked.first, std::min(asked.last, today() - 1)};
    (*answer)[key(DATA)] = rowsOf(m_ledger->trades(request.security(), past));
}

QJsonObject tradeNotification(const Execution &newest)
{
    return {
        {key(STKCODE), newest.security.code},
        {key(MARKET), marketNumber(newest.security.market)},
        {key(RTSORDERNO), newest.orderNo},
        {key(RTSORDERSTATUS), key(TradeChart::OrderStatus::Dealed)},
    };
}

} // namespace TradeModule
