#include "trademodule/check/CaseRun.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/check/AnswerRules.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonDocument>

#include <algorithm>

namespace TradeModule {

using namespace TradeChart::TradeKeyFields;

namespace {

QByteArray json(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QLatin1String key(const char *name)
{
    return QLatin1String(name);
}

/// What came while an answer was waited for, as a person says it.
QString inSeconds(std::chrono::milliseconds time)
{
    return QString::number(std::chrono::duration<double>(time).count());
}

} // namespace

CaseRun::CaseRun(Conversation *conversation, const CheckSettings &settings, CheckMemory *memory)
    : m_conversation(conversation),
      m_settings(settings),
      m_memory(memory)
{
}

QJsonObject CaseRun::question(const char *command) const
{
    return question(command, m_settings.security);
}

QJsonObject CaseRun::question(const char *command, const Trading::SecurityId &security)
{
    return {{key(CMD), key(command)},
            {key(STKCODE), security.code},
            {key(MARKET), Trading::marketLetters(security.market)}};
}

QJsonObject CaseRun::ask(const QJsonObject &question)
{
    return askOn(m_conversation->newScreen(), question);
}

QJsonObject CaseRun::askOn(const QByteArray &screen, QJsonObject question)
{
    question.insert(key(SCREENID), QString::fromUtf8(screen));
    if (!question.contains(key(OBJECTID))) {
        question.insert(key(OBJECTID), QStringLiteral("object of ") + QString::fromUtf8(screen));
    }
    m_lastQuestion = json(question);
    m_lastAnswer.clear();
    m_conversation->ask(m_lastQuestion);
    expectAnswers(screen, 1);
    return judge(question, m_conversation->answerOn(screen));
}

QJsonObject CaseRun::askWell(const QJsonObject &question)
{
    const QJsonObject answer = ask(question);
    if (answer.value(key(SUCCESS)) == QJsonValue(false)) {
        m_faults.append(translated("it is refused: %1").arg(answer.value(key(MSG)).toString()));
    }
    return answer;
}

QJsonArray CaseRun::rows(const QJsonObject &question)
{
    return askWell(question).value(key(DATA)).toArray();
}

void CaseRun::askInVain(const QJsonObject &question, const char *name, int kind)
{
    expectFailure(ask(question), name, kind);
}

void CaseRun::requestInVain(const QByteArray &message)
{
    m_lastQuestion = message;
    const QJsonObject question = QJsonDocument::fromJson(message).object();
    expectFailure(judge(question, m_conversation->request(message)), nullptr, 1);
}

void CaseRun::expectFailure(const QJsonObject &answer, const char *name, int kind)
{
    if (answer.isEmpty()) {
        return; // told already
    }
    if (answer.value(key(SUCCESS)) != QJsonValue(false)) {
        m_faults.append(translated("it is not refused"));
        return;
    }
    const int told = answer.value(key(ERRCODE)).toInt();
    expect(told == kind, translated("\"errcode\" is %1, but must be %2").arg(told).arg(kind));
    expect(name == nullptr || answer.value(key(MSG)).toString().contains(key(name)),
           translated("\"msg\" does not name \"%1\"").arg(key(name == nullptr ? "" : name)));
}

QJsonObject CaseRun::judge(const QJsonObject &question, const QByteArray &answer)
{
    m_lastAnswer = answer;
    if (answer.isEmpty()) {
        m_faults.append(translated("no answer comes within %1 s").arg(inSeconds(m_settings.patience)));
        return {};
    }
    const Verdict verdict = judgeAnswer(question, answer);
    take(verdict);
    return verdict.message;
}

void CaseRun::judgeUnasked(Trading::MessageRole role, const QByteArray &message)
{
    take(TradeModule::judgeUnasked(role, message));
}

/// What many messages have wrong is told once.
void CaseRun::take(const Verdict &verdict)
{
    for (const QString &fault : verdict.faults) {
        expect(m_faults.contains(fault), fault);
    }
    for (auto key = verdict.leftOut.begin(); key != verdict.leftOut.end(); ++key) {
        m_memory->leftOut.insert(key.key(), *key);
    }
    m_memory->seen += verdict.seen;
}

QJsonObject CaseRun::presence() const
{
    const QByteArrayList &heard = m_conversation->presences();
    return heard.isEmpty() ? QJsonObject() : QJsonDocument::fromJson(heard.last()).object();
}

bool CaseRun::isSaidToKnow(const char *capability) const
{
    return presence().value(key(Trading::PresenceFields::CAN)).toArray().contains(QString(key(capability)));
}

void CaseRun::expectOfEach(const QJsonArray &rows, const std::function<bool(const QJsonObject &)> &holds,
                           const QString &fault)
{
    expect(
        std::all_of(rows.begin(), rows.end(), [&](const QJsonValue &row) { return holds(row.toObject()); }),
        fault);
}

void CaseRun::expect(bool holds, const QString &fault)
{
    if (!holds) {
        m_faults.append(fault);
    }
}

} // namespace TradeModule
