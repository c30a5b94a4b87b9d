#include "terminal/answers/ScreenAnswers.h"

#include "terminal/answers/AnswerFaultText.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace Terminal {

namespace {

using namespace TradeChart;
using Trading::AnswerFinding;
using Trading::CheckedAnswer;

bool isAnswer(const QJsonObject &message)
{
    return message.contains(QLatin1String(TradeKeyFields::SUCCESS)) ||
           message.contains(QLatin1String(TradeKeyFields::DATA));
}

/// The overlay shows the reason itself: the user has just asked for the cancellation.
bool isShownByOverlay(const CheckedAnswer &answer, const AnswerFinding &finding)
{
    return finding.kind == AnswerFinding::Refused && answer.command == QLatin1String(CmdType::ENTRUSTCANCEL);
}

void hideValues(CheckedAnswer *answer)
{
    for (AnswerFinding &finding : answer->findings) {
        const bool isValue =
            finding.kind == AnswerFinding::WrongType || finding.kind == AnswerFinding::NotAllowed;
        finding.value = isValue ? QStringLiteral("***") : finding.value;
    }
}

} // namespace

ScreenAnswers::ScreenAnswers(const QByteArray &screenId, QObject *parent)
    : QObject(parent),
      m_endPoint(nullptr),
      m_screenId(screenId),
      m_chart{QString::fromUtf8(screenId), {}},
      m_checker(this)
{
    connect(&m_endPoint, &LocalCommunication::EndPoint::ready, this, &ScreenAnswers::listening);
    connect(&m_endPoint, &LocalCommunication::EndPoint::messageReceived, this, &ScreenAnswers::take);
}

void ScreenAnswers::start(const QString &address)
{
    m_endPoint.subscribe(m_screenId, QByteArray(Topic::TRADEQUERY));
    m_endPoint.subscribe(QByteArray(Trading::Channel::GLOBAL),
                         QList<QByteArray>{Topic::TRADEQUERY, Topic::TRADENOTIFY});
    m_endPoint.connect(address);
}

void ScreenAnswers::setSecurity(const Trading::SecurityId &security)
{
    if (m_chart.security != security) {
        m_chart.security = security;
        m_told.clear();
    }
    ++m_historyQuestion;
}

void ScreenAnswers::take(const QByteArray &topic, const QByteArray &payload, const QByteArray &channel)
{
    if (topic == Topic::TRADENOTIFY) {
        takeNotification(payload);
    } else if (channel == m_screenId) {
        takeAnswer(payload);
    } else if (channel == Trading::Channel::GLOBAL) {
        const SharedNews news = readSharedNews(topic, payload);
        if (news.kind != SharedNews::None) {
            Q_EMIT newsHeard(news);
        }
        if (payload.contains(m_screenId)) { // the questions of all windows pass by
            takeShared(payload);
        }
    }
}

void ScreenAnswers::takeAnswer(const QByteArray &payload)
{
    m_checker.check(payload, m_chart,
                    [this, security = m_chart.security,
                     question = m_historyQuestion](const CheckedAnswer &answer, const QByteArray &digest) {
                        if (security == m_chart.security) { // else the chart has moved on meanwhile
                            takeChecked(answer, {digest, question});
                        }
                    });
}

void ScreenAnswers::takeChecked(CheckedAnswer answer, const History &history)
{
    if (isToNobodysQuestion(answer)) {
        return;
    }
    if (answer.isForChart) {
        addRepetition(history, &answer);
    }
    if (m_hidesAmounts) {
        hideValues(&answer);
    }
    tellFaults(answer);
    if (answer.isForChart) {
        Q_EMIT answered(answer);
    }
}

/// An overlay that has no part in the shown period knows no security; at news it asks all the same, and is
/// refused. The user did not ask for it and misses nothing.
bool ScreenAnswers::isToNobodysQuestion(const CheckedAnswer &answer)
{
    return answer.isRefusal && m_askedOfNone.remove(answer.command);
}

/// A question of this window, or an answer to one that went astray.
void ScreenAnswers::takeShared(const QByteArray &payload)
{
    const QJsonObject message = QJsonDocument::fromJson(payload).object();
    if (message.value(QLatin1String(TradeKeyFields::SCREENID)).toString().toUtf8() != m_screenId) {
        return;
    }
    const QString command = message.value(QLatin1String(TradeKeyFields::CMD)).toString();
    if (isAnswer(message)) {
        CheckedAnswer answer{command, true};
        answer.findings.append({AnswerFinding::OtherChannel, QLatin1String(TradeKeyFields::SCREENID),
                                QLatin1String(Trading::Channel::GLOBAL)});
        tellFaults(answer);
        return;
    }
    const QJsonValue code = message.value(QLatin1String(TradeKeyFields::STKCODE));
    if (code.isString() && code.toString().isEmpty()) {
        m_askedOfNone.insert(command);
        return;
    }
    if (command == QLatin1String(CmdType::HISTORYTRADE)) {
        ++m_historyQuestion;
        tellOfNewBars(code.toString());
    }
    Q_EMIT asked(command);
}

/// The trade points ask for past trades when they get other bars, for those of today only when their refresh
/// is due or news come. So new bars are news: else a trader would wait for a refresh to see what he has dealt
/// today. On their chart no other overlay hears of it.
void ScreenAnswers::tellOfNewBars(const QString &code)
{
    const QJsonObject news{{QLatin1String(TradeKeyFields::STKCODE), code}};
    m_endPoint.sendMessage(m_screenId, Topic::TRADENOTIFY,
                           QJsonDocument(news).toJson(QJsonDocument::Compact));
}

void ScreenAnswers::takeNotification(const QByteArray &payload)
{
    const QJsonObject change = QJsonDocument::fromJson(payload).object();
    if (change.contains(QLatin1String(TradeKeyFields::RTSDATE))) {
        Q_EMIT pastTradesChanged(change.value(QLatin1String(TradeKeyFields::STKCODE)).toString());
    }
}

/// Overlays add past trades up: an answer that comes twice doubles them.
void ScreenAnswers::addRepetition(const History &history, CheckedAnswer *answer)
{
    if (answer->command != QLatin1String(CmdType::HISTORYTRADE) || answer->rows == 0) {
        return;
    }
    if (history.digest == m_lastHistory.digest && history.question == m_lastHistory.question) {
        answer->findings.append({AnswerFinding::Repeated, QLatin1String(TradeKeyFields::DATA), QString(),
                                 Trading::WhenWrong::ListedTwice});
    }
    m_lastHistory = history;
}

void ScreenAnswers::tellFaults(const CheckedAnswer &answer)
{
    QStringList news;
    for (const AnswerFinding &finding : answer.findings) {
        const QString text = faultText(answer.command, finding);
        qWarning("%s", qUtf8Printable(text));
        const QString what = QStringLiteral("%1 %2 %3").arg(answer.command, finding.key).arg(finding.kind);
        if (!m_told.contains(what) && !isShownByOverlay(answer, finding)) {
            m_told.insert(what);
            news.append(text);
        }
    }
    if (!news.isEmpty()) {
        Q_EMIT foundWrong(news);
    }
}

} // namespace Terminal
