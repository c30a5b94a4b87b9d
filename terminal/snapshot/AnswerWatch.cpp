#include "terminal/snapshot/AnswerWatch.h"

#include "terminal/plugin/HostRecords.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace Terminal {

namespace {

using namespace TradeChart;

/// The questions that an overlay asks for a chart; none when it does not serve the period.
QStringList awaitedCommands(const OverlayKind &kind, ChartPeriod period, bool isToday)
{
    QStringList commands;
    for (const OverlayQuestion &question : kind.questions) {
        if (question.isAsked(period, isToday)) {
            commands.append(QLatin1String(question.command));
        }
    }
    return commands;
}

bool holdsSomethingToDraw(const QJsonValue &data)
{
    return data.isArray() ? !data.toArray().isEmpty()
                          : data.toObject().contains(QLatin1String(TradeKeyFields::COSTPRICE));
}

} // namespace

AnswerWatch::AnswerWatch(const QByteArray &screenId, const ChartData &data, const QStringList &kinds,
                         QObject *parent)
    : QObject(parent),
      m_endPoint(nullptr),
      m_screenId(screenId),
      m_code(data.security.code)
{
    for (const QString &word : kinds) {
        const OverlayKind *const kind = findOverlayKind(word);
        const int firstCalculation = kind->isCombined() ? 1 : 0;
        m_awaited.push_back(
            {kind, awaitedCommands(*kind, data.period, isTodaysChart(data)), {}, firstCalculation});
    }
    connect(&m_endPoint, &LocalCommunication::EndPoint::ready, this, &AnswerWatch::listening);
    connect(&m_endPoint, &LocalCommunication::EndPoint::messageReceived, this, &AnswerWatch::take);
}

void AnswerWatch::start(const QString &address)
{
    m_endPoint.subscribe(m_screenId, QByteArray(Topic::TRADEQUERY));
    m_endPoint.subscribe(QByteArray(Trading::Channel::GLOBAL), QByteArray(Topic::TRADEQUERY));
    m_endPoint.connect(address);
}

void AnswerWatch::take(const QByteArray &topic, const QByteArray &payload, const QByteArray &channel)
{
    if (channel == m_screenId) {
        takeAnswer(payload);
    } else if (channel == Trading::Channel::GLOBAL) {
        takeSharedNews(readSharedNews(topic, payload));
    }
}

void AnswerWatch::takeSharedNews(const SharedNews &news)
{
    if (news.kind == SharedNews::None || news.code != m_code) {
        return;
    }
    const QString command = QLatin1String(CmdType::HISTORYTRADE);
    for (Awaited &awaited : m_awaited) {
        if (!awaited.kind->isCombined() || awaited.kind->questions.empty()) {
            continue;
        }
        awaited.updates = 0;
        awaited.answered = news.kind == SharedNews::Spoilt ? QStringList() : QStringList(command);
    }
    Q_EMIT progressed();
}

void AnswerWatch::takeAnswer(const QByteArray &payload)
{
    const QJsonObject answer = QJsonDocument::fromJson(payload).object();
    const QString command = answer.value(QLatin1String(TradeKeyFields::CMD)).toString();
    if (answer.value(QLatin1String(TradeKeyFields::STKCODE)).toString() != m_code) {
        return;
    }
    const bool isDrawable = holdsSomethingToDraw(answer.value(QLatin1String(TradeKeyFields::DATA)));
    for (Awaited &awaited : m_awaited) {
        if (!awaited.kind->isCombined() && awaited.commands.contains(command)) {
            awaited.answered.append(command);
            awaited.drawableAnswers += isDrawable ? 1 : 0;
        }
    }
    Q_EMIT progressed();
}

void AnswerWatch::noteUpdate(const OverlayKind *kind)
{
    for (Awaited &awaited : m_awaited) {
        awaited.updates += awaited.kind == kind ? 1 : 0;
    }
    Q_EMIT progressed();
}

QStringList AnswerWatch::missing() const
{
    QStringList missing;
    for (const Awaited &awaited : m_awaited) {
        for (const QString &command : awaited.commands) {
            if (!awaited.answered.contains(command)) {
                missing.append(tr("the answer to %1").arg(command));
            }
        }
        if (awaited.updates < awaited.drawableAnswers) {
            missing.append(tr("the drawing of %1").arg(QLatin1String(awaited.kind->word)));
        }
    }
    return missing;
}

} // namespace Terminal
