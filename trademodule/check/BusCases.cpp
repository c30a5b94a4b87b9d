#include "trademodule/check/BusCases.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/check/CaseRun.h"
#include "trading/ModuleVocabulary.h"

#include <QCoreApplication>
#include <QJsonDocument>

namespace TradeModule {

using namespace TradeChart::CmdType;
using namespace TradeChart::TradeKeyFields;
using namespace Trading;

namespace {

QByteArray json(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QJsonObject onScreen(QJsonObject question, const QByteArray &screen)
{
    question.insert(QLatin1String(SCREENID), QString::fromUtf8(screen));
    return question;
}

// Presence

/// The broker hands a kept word over as soon as it is listened for.
void hearPresence(CaseRun &run)
{
    run.ask(run.question(HOLDERCOSTPRICE));
    if (run.conversation().presences().isEmpty()) {
        run.skip(translated(
            "it does not announce itself: terminals that join later learn of it only when it answers"));
    }
}

void judgePresences(CaseRun &run)
{
    for (const QByteArray &word : run.conversation().presences()) {
        run.judgeUnasked(MessageRole::Presence, word);
    }
    if (run.conversation().presences().isEmpty()) {
        run.skip(translated("it does not announce itself"));
    }
}

void hearOnline(CaseRun &run)
{
    if (run.conversation().presences().isEmpty()) {
        return run.skip(translated("it does not announce itself"));
    }
    run.expect(run.presence().value(QLatin1String(PresenceFields::ONLINE)) == QJsonValue(true),
               translated("it answers, but says that it is not there"));
}

// Where answers go

void askWithoutScreen(CaseRun &run)
{
    const QJsonObject question = run.question(HOLDERCOSTPRICE);
    run.judge(question, run.conversation().request(json(question)));
}

void askOnOddScreen(CaseRun &run)
{
    run.askOn(run.conversation().newScreen(" 屏 1/#+%$"), run.question(HOLDERCOSTPRICE));
}

void askOnTwoScreens(CaseRun &run)
{
    const QByteArray screens[] = {run.conversation().newScreen(), run.conversation().newScreen()};
    const char *const commands[] = {HOLDERCOSTPRICE, TODAYTRADE};
    for (int place = 0; place < 2; ++place) {
        run.conversation().ask(json(onScreen(run.question(commands[place]), screens[place])));
        run.expectAnswers(screens[place], 1);
    }
    for (int place = 0; place < 2; ++place) {
        const QJsonObject question = onScreen(run.question(commands[place]), screens[place]);
        run.judge(question, run.conversation().answerOn(screens[place]));
    }
}

void askWithOddObject(CaseRun &run)
{
    QJsonObject question = run.question(HOLDERCOSTPRICE);
    question.insert(QLatin1String(OBJECTID), QString::fromUtf8("{\"持仓\\ 🂡\"}"));
    run.askWell(question);
}

void askWithUnknownKeys(CaseRun &run)
{
    QJsonObject question = run.question(HOLDERCOSTPRICE);
    question.insert(QStringLiteral("colour"), QStringLiteral("red"));
    run.askWell(question);
}

// What is no question

/// A question that follows tells when nothing more can come.
void sayAnswer(CaseRun &run)
{
    const QByteArray screen = run.conversation().newScreen();
    QJsonObject answer = onScreen(run.question(HOLDERCOSTPRICE), screen);
    answer.insert(QLatin1String(SUCCESS), true);
    run.conversation().ask(json(answer));
    run.expectAnswers(screen, 0);
    run.ask(run.question(HOLDERCOSTPRICE));
}

template <int depth>
void askDeep(CaseRun &run)
{
    QJsonValue nested = 1;
    for (int level = 0; level < depth; ++level) {
        nested = QJsonArray{nested};
    }
    QJsonObject question = run.question(HOLDERCOSTPRICE);
    question.insert(QStringLiteral("nested"), nested);
    run.ask(question);
}

void askLong(CaseRun &run)
{
    QJsonObject question = run.question(HOLDERCOSTPRICE);
    question.insert(QStringLiteral("long"), QString(run.settings().longQuestion, u'x'));
    run.askWell(question);
}

// Many, again, and late

QJsonObject withoutScreen(QJsonObject answer)
{
    answer.remove(QLatin1String(SCREENID));
    answer.remove(QLatin1String(OBJECTID));
    return answer;
}

void askTwice(CaseRun &run)
{
    const QJsonObject first = run.ask(run.question(HOLDERCOSTPRICE));
    const QJsonObject second = run.ask(run.question(HOLDERCOSTPRICE));
    run.expect(withoutScreen(first) == withoutScreen(second),
               translated("the same question is answered in another way the second time"));
}

void askTwiceOnOneScreen(CaseRun &run)
{
    const QByteArray screen = run.conversation().newScreen();
    const QByteArray question = json(onScreen(run.question(HOLDERCOSTPRICE), screen));
    run.conversation().ask(question);
    run.conversation().ask(question);
    run.expectAnswers(screen, 2);
    run.expect(run.conversation().waitForAnswers(screen, 2, run.settings().patience),
               translated("a question that is repeated is not answered again"));
}

/// Who asked may be gone when the answer comes.
void askForNobody(CaseRun &run)
{
    run.conversation().ask(json(onScreen(run.question(HOLDERCOSTPRICE), "nobody listens here")));
    run.askWell(run.question(HOLDERCOSTPRICE));
}

void askMany(CaseRun &run)
{
    const QByteArray screen = run.conversation().newScreen();
    const int count = run.settings().flood;
    for (int number = 0; number < count; ++number) {
        run.conversation().ask(json(onScreen(run.question(HOLDERCOSTPRICE), screen)));
    }
    run.expectAnswers(screen, count);
    run.conversation().waitForAnswers(screen, count, 10 * run.settings().patience);
    const int came = run.conversation().answersOn(screen).size();
    run.expect(came >= count, translated("of %1 questions at once %2 are answered").arg(count).arg(came));
    run.askWell(run.question(HOLDERCOSTPRICE));
}

void request(CaseRun &run, const QByteArray &message)
{
    run.requestInVain(message);
    run.ask(run.question(HOLDERCOSTPRICE));
}

} // namespace

CheckCases presenceCases()
{
    constexpr const char *announcements = "docs/bus-protocol.md#announcements";
    return {
        {"presence.kept", QT_TR_NOOP("what the broker keeps of the module"),
         QT_TR_NOOP("the module's presence"), announcements, hearPresence},
        {"presence.keys", QT_TR_NOOP("the module's presence"),
         QT_TR_NOOP("a message whose keys are as the guide says"), "docs/messages.md#a-presence",
         judgePresences},
        {"presence.online", QT_TR_NOOP("the module's presence, while it answers"),
         QT_TR_NOOP("\"online\" is true"), announcements, hearOnline},
    };
}

CheckCases busCases()
{
    constexpr int depth = 200;
    constexpr const char *refused = QT_TR_NOOP("a failure of kind 1, and further questions are answered");
    constexpr const char *stays = QT_TR_NOOP("an answer; the module goes on");
    constexpr const char *questions = "docs/trading-module.md#questions-and-answers";
    return {
        {"bus.no-screen", QT_TR_NOOP("a request without \"screenId\""),
         QT_TR_NOOP("the answer on the Response Topic, with the Correlation Data"),
         "docs/bus-protocol.md#request-and-response", askWithoutScreen},
        {"bus.odd-screen", QT_TR_NOOP("a screen whose name has blanks, slashes, wildcards and Chinese"),
         QT_TR_NOOP("the answer on that channel, encoded"), "docs/bus-protocol.md#topic-paths",
         askOnOddScreen},
        {"bus.two-screens", QT_TR_NOOP("questions of two screens at once"),
         QT_TR_NOOP("each answer on its own screen"), "docs/bus-protocol.md#channels-and-topics",
         askOnTwoScreens},
        {"bus.odd-object", QT_TR_NOOP("an \"objectId\" with quotes and Chinese"),
         QT_TR_NOOP("an answer that has it as it was, or not at all"), "docs/messages.md#every-answer",
         askWithOddObject},
        {"bus.unknown-keys", QT_TR_NOOP("a question with a key that nobody knows"),
         QT_TR_NOOP("the usual answer"), questions, askWithUnknownKeys},
        {"bus.answer", QT_TR_NOOP("a message with \"success\", which is an answer"), QT_TR_NOOP("nothing"),
         questions, sayAnswer},
        {"bus.no-json", QT_TR_NOOP("a request that is no JSON"), refused, questions,
         [](CaseRun &run) { request(run, "hello"); }},
        {"bus.no-object", QT_TR_NOOP("a request that is a JSON array"), refused, questions,
         [](CaseRun &run) { request(run, "[1]"); }},
        {"bus.nothing-in-it", QT_TR_NOOP("a request that is an empty object"), refused, questions,
         [](CaseRun &run) { request(run, "{}"); }},
        {"bus.deep", QT_TR_NOOP("a question with arrays in arrays, 200 deep"), stays, questions,
         askDeep<depth>},
        {"bus.long", QT_TR_NOOP("a question of a megabyte"), stays, questions, askLong},
        {"repeat.later", QT_TR_NOOP("a question, and the same after its answer"),
         QT_TR_NOOP("the same answer"), questions, askTwice},
        {"repeat.at-once", QT_TR_NOOP("the same question twice at once"), QT_TR_NOOP("two answers"),
         questions, askTwiceOnOneScreen},
        {"late.nobody", QT_TR_NOOP("a question whose asker is gone, then another one"),
         QT_TR_NOOP("an answer to the other one"), questions, askForNobody},
        {"flood.questions", QT_TR_NOOP("a thousand questions at once"),
         QT_TR_NOOP("a thousand answers, and one to the next question in time"), questions, askMany},
    };
}

} // namespace TradeModule
