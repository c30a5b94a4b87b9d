#include "trading/MessageTable.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"
#include "trading/ResultColumns.h"

#include <QStringList>
#include <QtGlobal>

#include <algorithm>
#include <iterator>

namespace Trading {

namespace {

using namespace TradeChart::TradeKeyFields;
using namespace TradeChart::CmdType;
using namespace Trading::CmdType;

constexpr bool required = true;
constexpr bool optional = false;

MessageKeys operator+(MessageKeys first, const MessageKeys &more)
{
    first.insert(first.end(), more.begin(), more.end());
    return first;
}

// Records

const RecordShape &holding()
{
    static const RecordShape shape{
        "A holding",
        {{STKCODE, JsonType::Text, Form::Filled, required, WhenWrong::Ignored, "security"},
         {MARKET, JsonType::Text, Form::MarketNumber, required, WhenWrong::Ignored, "its market"},
         {COSTPRICE, JsonType::Text, Form::Cost, optional, WhenWrong::NoLine,
          "cost per share in yuan; left out when nothing is held"}}};
    return shape;
}

/// What trades of today and of past days have in common besides day and time.
MessageKeys tradeKeys()
{
    return {
        {RTSBSFLAG, JsonType::Text, Form::TradeSide, required, WhenWrong::Sale, "side"},
        {RTSMATCHPRICE, JsonType::Text, Form::Price, required, WhenWrong::Zero, "price in yuan"},
        {RTSMATCHQTY, JsonType::Text, Form::Price, required, WhenWrong::Zero, "shares"},
        {STKCODE, JsonType::Text, Form::Filled, optional, WhenWrong::Nothing, "security"},
        {MARKET, JsonType::Text, Form::MarketNumber, optional, WhenWrong::DrawnAllTheSame, "its market"},
        {RTSORDERNO, JsonType::Text, Form::Any, optional, WhenWrong::Nothing, "number of the order"},
        {RTSMATCHAMT, JsonType::Text, Form::Price, optional, WhenWrong::Nothing, "amount in yuan"},
        {BUY, JsonType::Flag, Form::Any, optional, WhenWrong::Sale,
         "true for a buy; the combined overlay reads this"},
        {PRICE, JsonType::Number, Form::Price, optional, WhenWrong::Zero,
         "the price again, for the combined overlay"},
        {VOL, JsonType::Number, Form::Price, optional, WhenWrong::Zero,
         "the shares again, for the combined overlay"},
        {DATE, JsonType::Text, Form::Day, optional, WhenWrong::Nothing,
         "the day again; the combined overlay reads and drops it"},
    };
}

const RecordShape &tradeOfToday()
{
    static const RecordShape shape{
        "A trade of today",
        MessageKeys{
            {RTSORDERDATE, JsonType::Text, Form::Day, required, WhenWrong::NoBar, "day of the order"},
            {RTSENTRUSTTIME, JsonType::Text, Form::Time, required, WhenWrong::WrongTime, "time of the order"},
            {RTSDATE, JsonType::Text, Form::Day, optional, WhenWrong::Nothing, "day of the execution"},
            {RTSMATCHTIME, JsonType::Text, Form::Time, optional, WhenWrong::Nothing,
             "time of the execution"}} +
            tradeKeys()};
    return shape;
}

const RecordShape &pastTrade()
{
    static const RecordShape shape{
        "A trade of a past day",
        MessageKeys{
            {RTSDATE, JsonType::Text, Form::Day, required, WhenWrong::NoBar, "day of the execution"},
            {RTSMATCHTIME, JsonType::Text, Form::Time, required, WhenWrong::WrongTime,
             "time of the execution"},
            {RTSORDERDATE, JsonType::Text, Form::Day, optional, WhenWrong::Nothing, "day of the order"},
            {RTSENTRUSTTIME, JsonType::Text, Form::Time, optional, WhenWrong::Nothing, "time of the order"}} +
            tradeKeys()};
    return shape;
}

const RecordShape &order()
{
    static const RecordShape shape{
        "An order",
        {{MARKET, JsonType::Text, Form::MarketNumber, required, WhenWrong::SkippedRow,
          "its market; rows of another one than the chart's are left out"},
         {RTSBSFLAG, JsonType::Text, Form::OrderSide, required, WhenWrong::SkippedRow, "side"},
         {RTSORDERSTATUS, JsonType::Text, Form::OrderStatus, required, WhenWrong::NoMarker,
          "status; a row with an empty one is left out"},
         {RTSORDERNO, JsonType::Text, Form::Positive, required, WhenWrong::NoCancelling, "number"},
         {RTSORDERDATE, JsonType::Text, Form::Day, required, WhenWrong::FirstMinute, "day"},
         {RTSENTRUSTTIME, JsonType::Text, Form::Time, required, WhenWrong::FirstMinute,
          "time at which it was placed"},
         {RTSENTRUSTPRICE, JsonType::Text, Form::Price, required, WhenWrong::Zero, "price in yuan"},
         {RTSENTRUSTQTY, JsonType::Text, Form::Whole, required, WhenWrong::Zero, "shares"},
         {RTSMATCHQTY, JsonType::Text, Form::Whole, optional, WhenWrong::Zero, "of them, dealt"},
         {RTSMATCHAMT, JsonType::Text, Form::Price, optional, WhenWrong::Zero, "for this amount in yuan"},
         {RTSCANCELQTY, JsonType::Text, Form::Whole, optional, WhenWrong::Zero, "of them, cancelled"},
         {STKCODE, JsonType::Text, Form::Filled, optional, WhenWrong::Nothing, "security"},
         {STKNAME, JsonType::Text, Form::Any, optional, WhenWrong::Nothing, "its name"},
         {RTSFUNDID, JsonType::Text, Form::Any, optional, WhenWrong::Nothing, "fund account"},
         {RTSENTRUSTDATE, JsonType::Text, Form::Day, optional, WhenWrong::Nothing,
          "day on which it was placed"},
         {RTSCANCELFLAG, JsonType::Text, Form::Any, optional, WhenWrong::Nothing,
          "our module says \"0\"; nobody reads it"}}};
    return shape;
}

const RecordShape &cancellation()
{
    static const RecordShape shape{"A cancellation",
                                   {{MSGOK, JsonType::Text, Form::Filled, required, WhenWrong::EmptyMessage,
                                     "what the user is told; **the key ends in a blank**"}}};
    return shape;
}

const RecordShape &placedOrder()
{
    static const RecordShape shape{
        "A placed order",
        {{RTSORDERNO, JsonType::Text, Form::Positive, required, WhenWrong::NoCancelling, "its number"}}};
    return shape;
}

const RecordShape &replacement()
{
    using namespace ReplaceFields;
    static const RecordShape shape{
        "A replaced order",
        {{RTSORDERNO, JsonType::Text, Form::Positive, optional, WhenWrong::Nothing,
          "number of the old order"},
         {REPLACEMENT, JsonType::Text, Form::Replacement, required, WhenWrong::Failure,
          "how far it is: ask again with the same number while it is \"waiting\""},
         {NEWORDERNO, JsonType::Text, Form::Positive, optional, WhenWrong::NoCancelling,
          "number of the new order, when it is \"placed\""},
         {REASON, JsonType::Text, Form::Any, optional, WhenWrong::EmptyMessage,
          "why no order stands in place of the old one, when it \"failed\""}}};
    return shape;
}

MessageKey costMethod()
{
    return {CostFields::COSTMETHOD, JsonType::Text,
            Form::CostMethod,       optional,
            WhenWrong::Nothing,     "how costs are reckoned: \"average\", \"diluted\" or \"fifo\""};
}

const RecordShape &position()
{
    static const RecordShape shape{
        "A position",
        {{STKCODE, JsonType::Text, Form::Filled, required, WhenWrong::Zero, "security"},
         {STKNAME, JsonType::Text, Form::Any, optional, WhenWrong::Nothing, "its name"},
         {MARKET, JsonType::Text, Form::MarketNumber, required, WhenWrong::Zero, "its market"},
         {AccountFields::QTY, JsonType::Text, Form::Whole, required, WhenWrong::Zero, "shares held"},
         {AccountFields::SELLABLE, JsonType::Text, Form::Whole, required, WhenWrong::Zero,
          "of them, not bought today and not on offer"},
         {COSTPRICE, JsonType::Text, Form::Cost, required, WhenWrong::Zero, "cost per share in yuan"}}};
    return shape;
}

const RecordShape &account()
{
    static const RecordShape shape{
        "An account",
        {{AccountFields::CASH, JsonType::Text, Form::Price, required, WhenWrong::Zero, "cash in yuan"},
         {AccountFields::AVAILABLE, JsonType::Text, Form::Price, required, WhenWrong::Zero,
          "of it, what open buys and their fees leave for new ones"},
         {AccountFields::POSITIONS, JsonType::Rows, Form::Any, required, WhenWrong::NoRows, "what is held",
          &position()}}};
    return shape;
}

const RecordShape &receivedAction()
{
    static const RecordShape shape{
        "What was received on a day",
        {{ActionFields::DATE, JsonType::Text, Form::Day, required, WhenWrong::SkippedRow,
          "day on which it was booked"},
         {ActionFields::HELD, JsonType::Text, Form::Whole, required, WhenWrong::SkippedRow,
          "shares at the end of the day before, for which it was received"},
         {ActionFields::CASH, JsonType::Text, Form::Amount, required, WhenWrong::SkippedRow,
          "dividends in yuan"},
         {ActionFields::BONUS, JsonType::Text, Form::Amount, required, WhenWrong::SkippedRow,
          "whole number of shares received for nothing; below 0 where shares were put together"}}};
    return shape;
}

/// What the text of a column must be.
Form formOf(ResultKind kind)
{
    switch (kind) {
    case ResultKind::Text:
        return Form::Any;
    case ResultKind::Price:
        return Form::Price;
    case ResultKind::Count:
    case ResultKind::Shares: // more than an int holds
    case ResultKind::Money:
    case ResultKind::Gain:
    case ResultKind::Percent:
    case ResultKind::Cost:
        return Form::Amount;
    }
    Q_UNREACHABLE();
}

/// "sale, trip": the lists that have a column.
QByteArray listsWith(ResultField field)
{
    QStringList words;
    for (const ResultGroup group : resultGroups()) {
        const auto &fields = fieldsOf(group);
        if (std::find(fields.begin(), fields.end(), field) != fields.end()) {
            words.append(wordOf(group));
        }
    }
    return "of lists by " + words.join(QStringLiteral(", ")).toLatin1();
}

/// One shape for the rows of all lists: each has the columns of its own.
const RecordShape &resultRow()
{
    static std::vector<QByteArray> meanings;
    static const RecordShape shape = [] {
        RecordShape row{"A row of results", {}};
        meanings.reserve(static_cast<size_t>(ResultField::Method));
        for (int place = 0; place < static_cast<int>(ResultField::Method); ++place) {
            const ResultColumn &column = columnOf(static_cast<ResultField>(place));
            meanings.push_back(listsWith(column.field));
            row.keys.push_back({column.key, JsonType::Text, formOf(column.kind), optional,
                                WhenWrong::EmptyCell, meanings.back().constData()});
        }
        return row;
    }();
    return shape;
}

/// The same of all rows: what has a sense in their sum.
const RecordShape &resultSum()
{
    static const RecordShape shape = [] {
        RecordShape sum{"A sum of results", {}};
        for (const MessageKey &key : resultRow().keys) {
            if (findResultColumn(QLatin1String(key.key))->isSummed) {
                sum.keys.push_back(key);
            }
        }
        return sum;
    }();
    return shape;
}

const RecordShape &results()
{
    using namespace ResultsFields;
    static const RecordShape shape{
        "A part of a list of results",
        {{FIRST, JsonType::Text, Form::Whole, required, WhenWrong::Ignored, "number of the first row"},
         {ROWS, JsonType::Rows, Form::Any, required, WhenWrong::NoRows, "the part", &resultRow()},
         {COUNT, JsonType::Text, Form::Whole, required, WhenWrong::Zero, "of all rows of the list"},
         {SUM, JsonType::Record, Form::Any, required, WhenWrong::NoRows,
          "of all rows: the columns that have a sum", &resultSum()},
         {STATE, JsonType::Text, Form::Filled, required, WhenWrong::Ignored,
          "another text whenever the ledger has changed: parts with the same are of one list"},
         {INCOMPLETE, JsonType::Texts, Form::Any, optional, WhenWrong::NoRows,
          "codes of which more left than ever came in: earlier statements are missing"}}};
    return shape;
}

const RecordShape &chosenMethod()
{
    static const RecordShape shape{"A way to reckon costs",
                                   {{CostFields::COSTMETHOD, JsonType::Text, Form::CostMethod, required,
                                     WhenWrong::Failure, "in which costs are reckoned now"}}};
    return shape;
}

MessageKeys presenceKeys()
{
    using namespace PresenceFields;
    return {
        {INSTANCE, JsonType::Text, Form::Filled, required, WhenWrong::Ignored,
         "another one each time that a module begins to serve"},
        {ONLINE, JsonType::Flag, Form::Any, required, WhenWrong::Ignored, "false: it serves no more"},
        {FENCE, JsonType::Number, Form::Whole, required, WhenWrong::Zero,
         "rises each time that the ledger is taken over"},
        {VERSION, JsonType::Text, Form::Any, optional, WhenWrong::Nothing, "of the program"},
        {PROTOCOL, JsonType::Text, Form::Any, optional, WhenWrong::Nothing, "of questions and answers"},
        {CAN, JsonType::Texts, Form::Any, optional, WhenWrong::Nothing,
         "what it can do beyond the first protocol: \"clientno\", \"actions\", \"replace\", \"openorders\", "
         "\"status\""},
        {HOST, JsonType::Text, Form::Any, optional, WhenWrong::Nothing, "the machine it runs on"},
        {PROCESS, JsonType::Number, Form::Positive, optional, WhenWrong::Nothing, "its process there"},
        {PROCESSSTART, JsonType::Text, Form::Any, optional, WhenWrong::Nothing,
         "when that process began, as its machine counts"},
        {SINCE, JsonType::Text, Form::Instant, optional, WhenWrong::Nothing, "when it began to serve"},
        {READONLY, JsonType::Flag, Form::Any, optional, WhenWrong::Nothing,
         "true: it answers, but takes no orders"},
        {LEDGER, JsonType::Text, Form::Any, optional, WhenWrong::Nothing,
         "where its ledger is, for people; no password"}};
}

const RecordShape &moduleOfStatus()
{
    static const RecordShape shape{"A module", presenceKeys()};
    return shape;
}

const RecordShape &lastQuote()
{
    using namespace StatusFields;
    static const RecordShape shape{
        "The last quote",
        {{STKCODE, JsonType::Text, Form::Filled, required, WhenWrong::Ignored, "of this security"},
         {MARKET, JsonType::Text, Form::MarketLetters, required, WhenWrong::Ignored, "its market"},
         {QuoteFields::DATE, JsonType::Text, Form::Day, required, WhenWrong::Ignored, "day of the bar"},
         {QuoteFields::TIME, JsonType::Text, Form::QuoteTime, required, WhenWrong::Ignored,
          "up to then it is told"},
         {HEARD, JsonType::Text, Form::Instant, required, WhenWrong::Ignored, "when the quote came"}}};
    return shape;
}

const RecordShape &answersGiven()
{
    using namespace StatusFields;
    static const RecordShape shape{
        "Answers to a command",
        {{CMD, JsonType::Text, Form::Filled, required, WhenWrong::Ignored,
          "the command; \"other\" for what is none"},
         {COUNT, JsonType::Number, Form::Price, required, WhenWrong::Zero, "how many since it serves"},
         {FAILURES, JsonType::Number, Form::Price, required, WhenWrong::Zero, "of them"},
         {SECONDS, JsonType::Number, Form::Price, required, WhenWrong::Zero,
          "from question to answer within the module, all of them together"},
         {LONGEST, JsonType::Number, Form::Price, required, WhenWrong::Zero, "seconds of the longest one"}}};
    return shape;
}

const RecordShape &moduleStatus()
{
    using namespace StatusFields;
    static const RecordShape shape{
        "A status",
        {{MODULE, JsonType::Record, Form::Any, required, WhenWrong::Ignored, "who serves, as in its presence",
          &moduleOfStatus()},
         {TROUBLE, JsonType::Text, Form::Filled, optional, WhenWrong::Nothing,
          "why the ledger cannot be used at present"},
         {OPEN, JsonType::Number, Form::Whole, optional, WhenWrong::Nothing,
          "how many orders may still be dealt; missing while the ledger cannot be used"},
         {QUOTES, JsonType::Number, Form::Price, required, WhenWrong::Zero,
          "how many were heard since it serves"},
         {WAITINGQUOTES, JsonType::Number, Form::Whole, required, WhenWrong::Zero,
          "of them, waiting for the ledger"},
         {LASTQUOTE, JsonType::Record, Form::Any, optional, WhenWrong::Nothing, "the one that came last",
          &lastQuote()},
         {ANSWERS, JsonType::Rows, Form::Any, required, WhenWrong::NoRows, "by command", &answersGiven()}}};
    return shape;
}

// Messages

/// Commands that are about the account.
bool isAboutAccount(const char *command)
{
    return command == ACCOUNTINFO || command == OPENORDERS || command == RESULTS || command == COSTMETHOD ||
           command == MODULESTATUS;
}

MessageKeys everyQuestion(const char *command)
{
    const bool isAboutSecurity = !isAboutAccount(command);
    return {
        {CMD, JsonType::Text, Form::Command, required, WhenWrong::Refused, "what is asked"},
        {STKCODE, JsonType::Text, Form::Filled, isAboutSecurity, WhenWrong::Refused, "about which security"},
        {MARKET, JsonType::Text, Form::MarketLetters, isAboutSecurity, WhenWrong::Refused, "its market"},
        {SCREENID, JsonType::Text, Form::Filled, optional, WhenWrong::ToSender,
         "channel on which the answer is to come"},
        {OBJECTID, JsonType::Text, Form::Any, optional, WhenWrong::Nothing, "comes back in the answer"},
    };
}

/// What the answer's "data" is.
struct Data
{
    JsonType type;
    const RecordShape &inside;
};

MessageKeys everyAnswer(const char *command, const Data &data)
{
    const bool isAboutSecurity = !isAboutAccount(command);
    const bool isAction = command == ENTRUSTCANCEL || command == ENTRUSTPLACE || command == COSTMETHOD ||
                          command == CmdType::REPLACE;
    const bool isCancellation = command == ENTRUSTCANCEL;
    return {
        {CMD, JsonType::Text, Form::Command, required, WhenWrong::Ignored, "the question's"},
        {STKCODE, JsonType::Text, Form::Filled, isAboutSecurity && !isAction, WhenWrong::Ignored,
         "the question's"},
        {MARKET, JsonType::Text, Form::MarketNumber, optional, WhenWrong::Nothing,
         "of the question's market"},
        {SCREENID, JsonType::Text, Form::Filled, optional, WhenWrong::Nothing, "the question's"},
        {OBJECTID, JsonType::Text, Form::Any, isCancellation, WhenWrong::Ignored, "the question's"},
        {SUCCESS, JsonType::Flag, Form::Any, isAction, isAction ? WhenWrong::Failure : WhenWrong::Success,
         "false for a failure, which has no \"data\""},
        {ERRCODE, JsonType::Number, Form::FailureKind, optional, WhenWrong::Nothing,
         "0, or the kind of failure"},
        {MSG, JsonType::Text, Form::Any, optional, WhenWrong::EmptyMessage, "the reason of a failure"},
        {DATA, data.type, Form::Any, required, WhenWrong::NoRows, "what was asked", &data.inside},
    };
}

MessageRow question(const char *command, const char *meaning, const MessageKeys &own = {})
{
    return {MessageRole::Question, TradeChart::Topic::TRADEQUERY, command, meaning,
            everyQuestion(command) + own};
}

MessageRow answer(const char *command, const Data &data, const MessageKeys &own = {})
{
    return {MessageRole::Answer, TradeChart::Topic::TRADEQUERY, command, data.inside.title,
            everyAnswer(command, data) + own};
}

/// Repeats of its question whatever that held, so nothing is said of those keys here.
MessageRow failure()
{
    return {MessageRole::Failure,
            TradeChart::Topic::TRADEQUERY,
            nullptr,
            "what was asked could not be done, see above; it repeats \"cmd\", \"stkcode\", \"screenId\", "
            "\"objectId\" and \"clientno\" of the question as they came",
            {{SUCCESS, JsonType::Flag, Form::Any, required, WhenWrong::Success, "false"},
             {ERRCODE, JsonType::Number, Form::FailureKind, required, WhenWrong::Zero, "the kind of failure"},
             {MSG, JsonType::Text, Form::Filled, required, WhenWrong::EmptyMessage, "the reason"}}};
}

MessageKeys daysAsked()
{
    return {{START, JsonType::Text, Form::Day, required, WhenWrong::Refused, "first day, included"},
            {END, JsonType::Text, Form::Day, required, WhenWrong::Refused, "last day, included"}};
}

MessageKeys orderMeant()
{
    return {{RTSORDERDATE, JsonType::Text, Form::Day, required, WhenWrong::Refused, "day of the order"},
            {RTSORDERNO, JsonType::Text, Form::Positive, required, WhenWrong::Refused, "its number"}};
}

MessageKeys newOrder()
{
    return {{RTSBSFLAG, JsonType::Text, Form::OrderSide, required, WhenWrong::Refused, "side"},
            {RTSENTRUSTPRICE, JsonType::Text, Form::Price, required, WhenWrong::Refused,
             "price in yuan, above 0"},
            {RTSENTRUSTQTY, JsonType::Text, Form::Positive, required, WhenWrong::Refused, "shares"},
            {PlaceFields::CLIENTNO, JsonType::Text, Form::ClientNumber, optional, WhenWrong::Refused,
             "the asker's own number: asking again with it places no second order"}};
}

MessageKeys languageAsked()
{
    return {{AskerFields::LANG, JsonType::Text, Form::Any, optional, WhenWrong::Nothing,
             "\"zh\" or \"en\": the language of the asker, in which the module tells reasons from now on"}};
}

MessageKeys newPrice()
{
    return {{RTSENTRUSTPRICE, JsonType::Text, Form::Price, required, WhenWrong::Refused,
             "the new price in yuan, above 0"},
            {PlaceFields::CLIENTNO, JsonType::Text, Form::ClientNumber, required, WhenWrong::Refused,
             "the asker's own number: asking again with it replaces nothing a second time"}};
}

MessageKeys listAsked()
{
    using namespace ResultsFields;
    return {{BY, JsonType::Text, Form::ResultGroup, required, WhenWrong::Refused, "what a row stands for"},
            {FIRST, JsonType::Text, Form::Whole, optional, WhenWrong::Refused,
             "number of the first row that is asked for, from 0; 0 without it"},
            {MOST, JsonType::Text, Form::Positive, optional, WhenWrong::Refused,
             "how many rows at most, up to 1000; 1000 without it"},
            {ORDER, JsonType::Text, Form::ResultColumn, optional, WhenWrong::Refused,
             "the column that the list is ordered by; by code and time without it"},
            {DESCENDING, JsonType::Flag, Form::Any, optional, WhenWrong::Ignored,
             "true: what is most comes first"}};
}

MessageKeys methodAsked()
{
    return {{CostFields::COSTMETHOD, JsonType::Text, Form::CostMethod, required, WhenWrong::Refused,
             "how costs are to be reckoned from now on"}};
}

MessageRow notification()
{
    return {
        MessageRole::Notification,
        TradeChart::Topic::TRADENOTIFY,
        nullptr,
        "an order or a trade has changed, or the module has joined the bus",
        {{STKCODE, JsonType::Text, Form::Filled, required, WhenWrong::Ignored, "of this security"},
         {MARKET, JsonType::Text, Form::MarketNumber, optional, WhenWrong::Nothing, "its market"},
         {RTSORDERNO, JsonType::Text, Form::Any, optional, WhenWrong::Nothing, "of this order"},
         {RTSORDERSTATUS, JsonType::Text, Form::OrderStatus, optional, WhenWrong::Nothing, "its status now"},
         {RTSDATE, JsonType::Text, Form::Day, optional, WhenWrong::Nothing,
          "there when trades were entered, up to this day: past ones are to be asked for anew"}}};
}

MessageRow presence()
{
    return {MessageRole::Presence, Topic::TRADEPRESENCE, nullptr, "a module serves, or serves no more",
            presenceKeys()};
}

MessageRow quote()
{
    using namespace QuoteFields;
    const auto price = [](const char *key, const char *meaning, bool isRequired = required) {
        return MessageKey{key, JsonType::Text, Form::Price, isRequired, WhenWrong::WarnedOf, meaning};
    };
    return {MessageRole::Quote,
            Topic::QUOTE,
            nullptr,
            "a bar of the market, complete or as far as it is made; for charts and the paper exchange",
            {{STKCODE, JsonType::Text, Form::Filled, required, WhenWrong::WarnedOf, "security"},
             {MARKET, JsonType::Text, Form::AnyMarket, required, WhenWrong::WarnedOf, "its market"},
             {QuoteFields::DATE, JsonType::Text, Form::Day, required, WhenWrong::WarnedOf, "day of the bar"},
             {TIME, JsonType::Text, Form::QuoteTime, required, WhenWrong::WarnedOf,
              "end of the bar, or a time within its minute: up to then it is told"},
             price(OPEN, "open"),
             price(HIGH, "high"),
             price(LOW, "low"),
             price(CLOSE, "close"),
             price(VOLUME, "shares since the minute began"),
             price(PRECLOSE, "close of the day before", optional),
             {RECORDED, JsonType::Text, Form::Day, optional, WhenWrong::Nothing,
              "in the quotes of a replay: the day that it plays as \"date\""}}};
}

template <typename Value>
struct Word
{
    Value value;
    const char *word;
};

template <typename Value, std::size_t count>
const char *findWord(const Word<Value> (&words)[count], Value value)
{
    return std::find_if(std::begin(words), std::end(words),
                        [value](const Word<Value> &row) { return row.value == value; })
        ->word;
}

} // namespace

const std::vector<MessageRow> &messageTable()
{
    static const std::vector<MessageRow> table = {
        question(HOLDERCOSTPRICE, "the cost of the holding"),
        answer(HOLDERCOSTPRICE, {JsonType::Record, holding()},
               {{COSTPRICE, JsonType::Text, Form::Cost, optional, WhenWrong::Zero,
                 "the cost again, \"nan\" without one and in a failure; the combined overlay reads this"},
                costMethod()}),
        question(TODAYTRADE, "trades of today"),
        answer(TODAYTRADE, {JsonType::Rows, tradeOfToday()}),
        question(HISTORYTRADE, "trades of these days but not of today, oldest first", daysAsked()),
        answer(HISTORYTRADE, {JsonType::Rows, pastTrade()}),
        question(ENTRUSTTODAYTRADE, "orders of today"),
        answer(ENTRUSTTODAYTRADE, {JsonType::Rows, order()}),
        question(ENTRUSTHISTORYTRADE, "orders of a day",
                 {{TradeChart::TradeKeyFields::DATE, JsonType::Number, Form::Day, required,
                   WhenWrong::Refused, "the day: the one key of a question that is a number"}}),
        answer(ENTRUSTHISTORYTRADE, {JsonType::Rows, order()}),
        question(ENTRUSTCANCEL, "cancels what is left of an order", orderMeant()),
        answer(ENTRUSTCANCEL, {JsonType::Rows, cancellation()}),
        question(ENTRUSTPLACE, "places an order", newOrder() + languageAsked()),
        answer(ENTRUSTPLACE, {JsonType::Record, placedOrder()},
               {{PlaceFields::CLIENTNO, JsonType::Text, Form::ClientNumber, optional, WhenWrong::Nothing,
                 "the question's, when it had one"},
                {RTSORDERNO, JsonType::Text, Form::Positive, optional, WhenWrong::Nothing,
                 "the order's number again"}}),
        question(CmdType::REPLACE,
                 "cancels what is left of an order and, when that is confirmed, places it at another price",
                 orderMeant() + newPrice()),
        answer(CmdType::REPLACE, {JsonType::Record, replacement()},
               {{PlaceFields::CLIENTNO, JsonType::Text, Form::ClientNumber, optional, WhenWrong::Nothing,
                 "the question's"}}),
        question(ACCOUNTINFO, "cash and positions", languageAsked()),
        answer(ACCOUNTINFO, {JsonType::Record, account()}, {costMethod()}),
        question(OPENORDERS, "the orders of all securities that may still be dealt", languageAsked()),
        answer(OPENORDERS, {JsonType::Rows, order()}),
        question(RESULTS, "what was earned, a part of a list", listAsked()),
        answer(RESULTS, {JsonType::Record, results()}, {costMethod()}),
        question(COSTMETHOD, "reckons all costs in another way", methodAsked()),
        answer(COSTMETHOD, {JsonType::Record, chosenMethod()}),
        question(CORPORATEACTIONS, "dividends and bonus shares that the account received, oldest first"),
        answer(CORPORATEACTIONS, {JsonType::Rows, receivedAction()}),
        question(MODULESTATUS, "how the module stands, for who watches over it"),
        answer(MODULESTATUS, {JsonType::Record, moduleStatus()}),
        failure(),
        notification(),
        presence(),
        quote(),
    };
    return table;
}

const MessageRow *findMessage(MessageRole role, const QString &command)
{
    const auto &table = messageTable();
    const auto row = std::find_if(table.begin(), table.end(), [&](const MessageRow &candidate) {
        return candidate.role == role && QLatin1String(candidate.command) == command;
    });
    return row == table.end() ? nullptr : &*row;
}

const char *wordOf(JsonType type)
{
    static constexpr Word<JsonType> words[] = {
        {JsonType::Text, QT_TRANSLATE_NOOP("MessageTable", "text")},
        {JsonType::Number, QT_TRANSLATE_NOOP("MessageTable", "number")},
        {JsonType::Flag, QT_TRANSLATE_NOOP("MessageTable", "true or false")},
        {JsonType::Texts, QT_TRANSLATE_NOOP("MessageTable", "texts")},
        {JsonType::Record, QT_TRANSLATE_NOOP("MessageTable", "object")},
        {JsonType::Rows, QT_TRANSLATE_NOOP("MessageTable", "array of objects")},
    };
    return findWord(words, type);
}

const char *wordOf(Form form)
{
    static constexpr Word<Form> words[] = {
        {Form::Any, ""},
        {Form::Filled, QT_TRANSLATE_NOOP("MessageTable", "not empty")},
        {Form::Day, QT_TRANSLATE_NOOP("MessageTable", "yyyymmdd")},
        {Form::Time, QT_TRANSLATE_NOOP("MessageTable", "hhmmsscc")},
        {Form::QuoteTime, QT_TRANSLATE_NOOP("MessageTable", "hhmm, hhmmss or hhmmsscc")},
        {Form::Price, QT_TRANSLATE_NOOP("MessageTable", "decimal, at least 0")},
        {Form::Cost, QT_TRANSLATE_NOOP("MessageTable", "decimal, or \"nan\"")},
        {Form::Whole, QT_TRANSLATE_NOOP("MessageTable", "whole number from 0 to 2147483647")},
        {Form::Positive, QT_TRANSLATE_NOOP("MessageTable", "whole number from 1 to 2147483647")},
        {Form::TradeSide, QT_TRANSLATE_NOOP("MessageTable", "\"B\" or \"S\"")},
        {Form::OrderSide, QT_TRANSLATE_NOOP("MessageTable", "\"0B\", \"0S\" or another direction code")},
        {Form::OrderStatus, QT_TRANSLATE_NOOP("MessageTable", "a status code")},
        {Form::MarketLetters, QT_TRANSLATE_NOOP("MessageTable", "\"SH\" or \"SZ\"")},
        {Form::MarketNumber, QT_TRANSLATE_NOOP("MessageTable", "\"1\" or \"2\"")},
        {Form::AnyMarket, QT_TRANSLATE_NOOP("MessageTable", "\"SH\", \"SZ\", \"1\" or \"2\"")},
        {Form::Command, QT_TRANSLATE_NOOP("MessageTable", "a command")},
        {Form::ClientNumber, QT_TRANSLATE_NOOP("MessageTable", "1 to 64 printable ASCII characters")},
        {Form::Amount, QT_TRANSLATE_NOOP("MessageTable", "decimal")},
        {Form::ResultGroup,
         QT_TRANSLATE_NOOP("MessageTable", "\"sale\", \"trip\", \"security\", \"month\" or \"year\"")},
        {Form::ResultColumn, QT_TRANSLATE_NOOP("MessageTable", "a column of the list")},
        {Form::CostMethod, QT_TRANSLATE_NOOP("MessageTable", "\"average\", \"diluted\" or \"fifo\"")},
        {Form::Replacement,
         QT_TRANSLATE_NOOP("MessageTable", "\"waiting\", \"placed\", \"dealt\" or \"failed\"")},
        {Form::Instant, QT_TRANSLATE_NOOP("MessageTable", "ISO 8601 in UTC, as 2026-11-22T01:30:00Z")},
        {Form::FailureKind, QT_TRANSLATE_NOOP("MessageTable", "0, 1, 2 or 3")},
    };
    return findWord(words, form);
}

const char *wordOf(WhenWrong effect)
{
    static constexpr Word<WhenWrong> words[] = {
        {WhenWrong::Nothing, QT_TRANSLATE_NOOP("MessageTable", "nobody minds")},
        {WhenWrong::Refused, QT_TRANSLATE_NOOP("MessageTable", "refused; the reason names the key")},
        {WhenWrong::WarnedOf,
         QT_TRANSLATE_NOOP("MessageTable", "left alone, with a warning that names the key")},
        {WhenWrong::ToSender, QT_TRANSLATE_NOOP("MessageTable", "the answer goes to the sender")},
        {WhenWrong::Ignored, QT_TRANSLATE_NOOP("MessageTable", "the message is ignored")},
        {WhenWrong::NoRows, QT_TRANSLATE_NOOP("MessageTable", "counts as nothing")},
        {WhenWrong::Failure, QT_TRANSLATE_NOOP("MessageTable", "counts as a failure")},
        {WhenWrong::Success, QT_TRANSLATE_NOOP("MessageTable", "counts as a success")},
        {WhenWrong::EmptyMessage, QT_TRANSLATE_NOOP("MessageTable", "the user reads an empty message")},
        {WhenWrong::NoLine, QT_TRANSLATE_NOOP("MessageTable", "no line, or one at 0")},
        {WhenWrong::SkippedRow, QT_TRANSLATE_NOOP("MessageTable", "the row is left out")},
        {WhenWrong::Zero, QT_TRANSLATE_NOOP("MessageTable", "counts as 0")},
        {WhenWrong::Sale, QT_TRANSLATE_NOOP("MessageTable", "counts as a sale")},
        {WhenWrong::ListedTwice, QT_TRANSLATE_NOOP("MessageTable", "every trade is listed twice")},
        {WhenWrong::NoBar, QT_TRANSLATE_NOOP("MessageTable", "the trade stands on no bar")},
        {WhenWrong::WrongTime, QT_TRANSLATE_NOOP("MessageTable", "the trade is listed at a wrong time")},
        {WhenWrong::FirstMinute, QT_TRANSLATE_NOOP("MessageTable", "the order stands at 09:31")},
        {WhenWrong::NoMarker, QT_TRANSLATE_NOOP("MessageTable", "the order gets no marker")},
        {WhenWrong::NoCancelling, QT_TRANSLATE_NOOP("MessageTable", "the order cannot be cancelled")},
        {WhenWrong::EmptyCell, QT_TRANSLATE_NOOP("MessageTable", "the cell is empty")},
        {WhenWrong::DrawnAllTheSame, QT_TRANSLATE_NOOP("MessageTable", "drawn all the same")},
    };
    return findWord(words, effect);
}

} // namespace Trading
