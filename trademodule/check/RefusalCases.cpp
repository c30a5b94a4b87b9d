#include "trademodule/check/RefusalCases.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/check/CaseRun.h"

#include <QCoreApplication>

namespace TradeModule {

using namespace TradeChart::CmdType;
using namespace TradeChart::TradeKeyFields;

namespace {

/// A question with one thing wrong.
struct WrongQuestion
{
    const char *id;
    const char *asks;
    const char *command;
    const char *key;
    QJsonValue value; ///< undefined: the key is left out
};

const QJsonValue leftOut(QJsonValue::Undefined);

std::vector<WrongQuestion> wrongQuestions()
{
    constexpr int noSuchDay = 20240230;
    return {
        {"refuse.no-cmd", QT_TR_NOOP("a question without \"cmd\""), TODAYTRADE, CMD, leftOut},
        {"refuse.unknown-cmd", QT_TR_NOOP("a command that nobody knows"), TODAYTRADE, CMD,
         QStringLiteral("Weather")},
        {"refuse.cmd-number", QT_TR_NOOP("a number as \"cmd\""), TODAYTRADE, CMD, 7},
        {"refuse.no-code", QT_TR_NOOP("the cost without \"stkcode\""), HOLDERCOSTPRICE, STKCODE, leftOut},
        {"refuse.empty-code", QT_TR_NOOP("today's trades with an empty \"stkcode\""), TODAYTRADE, STKCODE,
         QStringLiteral("")},
        {"refuse.code-number", QT_TR_NOOP("past trades with a number as \"stkcode\""), HISTORYTRADE, STKCODE,
         600000},
        {"refuse.no-market", QT_TR_NOOP("today's orders without \"market\""), ENTRUSTTODAYTRADE, MARKET,
         leftOut},
        {"refuse.market-number", QT_TR_NOOP("the cost with \"1\" as \"market\", as only answers have it"),
         HOLDERCOSTPRICE, MARKET, QStringLiteral("1")},
        {"refuse.other-market", QT_TR_NOOP("today's trades of the market \"HK\""), TODAYTRADE, MARKET,
         QStringLiteral("HK")},
        {"refuse.no-start", QT_TR_NOOP("past trades without \"start\""), HISTORYTRADE, START, leftOut},
        {"refuse.start-number", QT_TR_NOOP("past trades with a number as \"start\""), HISTORYTRADE, START,
         20240102},
        {"refuse.start-no-day", QT_TR_NOOP("past trades from 30 February on"), HISTORYTRADE, START,
         QString::number(noSuchDay)},
        {"refuse.no-end", QT_TR_NOOP("past trades without \"end\""), HISTORYTRADE, END, leftOut},
        {"refuse.end-words", QT_TR_NOOP("past trades up to \"yesterday\""), HISTORYTRADE, END,
         QStringLiteral("yesterday")},
        {"refuse.no-date", QT_TR_NOOP("orders of a day without \"date\""), ENTRUSTHISTORYTRADE, DATE,
         leftOut},
        {"refuse.date-text", QT_TR_NOOP("orders of a day with a text as \"date\""), ENTRUSTHISTORYTRADE, DATE,
         QStringLiteral("20240102")},
        {"refuse.date-no-day", QT_TR_NOOP("orders of 30 February"), ENTRUSTHISTORYTRADE, DATE, noSuchDay},
    };
}

QJsonObject rightQuestion(const CaseRun &run, const char *command)
{
    QJsonObject question = run.question(command);
    if (qstrcmp(command, HISTORYTRADE) == 0) {
        question.insert(QLatin1String(START), run.settings().from.text());
        question.insert(QLatin1String(END), run.settings().to.text());
    } else if (qstrcmp(command, ENTRUSTHISTORYTRADE) == 0) {
        question.insert(QLatin1String(DATE), run.settings().to.number());
    }
    return question;
}

CheckCase refusal(const WrongQuestion &wrong)
{
    const auto askWrongly = [wrong](CaseRun &run) {
        constexpr int notUnderstood = 1;
        QJsonObject question = rightQuestion(run, wrong.command);
        question.insert(QLatin1String(wrong.key), wrong.value); // an undefined value takes the key away
        run.askInVain(question, wrong.key, notUnderstood);
    };
    const bool isShared = wrong.key == CMD || wrong.key == STKCODE || wrong.key == MARKET;
    return {wrong.id, wrong.asks, QT_TR_NOOP("a failure of kind 1 whose \"msg\" names the key"),
            isShared ? "docs/messages.md#every-question" : "docs/messages.md#own-keys-of-questions",
            askWrongly};
}

} // namespace

CheckCases refusalCases()
{
    CheckCases cases;
    for (const WrongQuestion &wrong : wrongQuestions()) {
        cases.push_back(refusal(wrong));
    }
    return cases;
}

} // namespace TradeModule
