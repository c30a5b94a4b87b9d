#include "terminal/snapshot/AnswerWatch.h"

#include "terminal/plugin/HostRecords.h"
#include "tradechartobject/common/TradeVocabulary.h"

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
        m_awaited.push_back({kind, awaitedCommands(*kind, data.period, isTodaysChart(data))});
    }
    connect(&m_endPoint, &LocalCommunication::EndPoint::ready, this, &AnswerWatch::listening);
    connect(&m_endPoint, &LocalCommunication::EndPoint::messageReceived, this,
            [this](const QByteArray &, const QByteArray &payload) { takeMessage(payload); });
}

void AnswerWatch::start(const QString &address)
{
    m_endPoint.subscribe(m_screenId, QByteArray(Topic::TRADEQUERY));
    m_endPoint.connect(address);
}

void AnswerWatch::takeMessage(const QByteArray &payload)
{
    const QJsonObject answer = QJsonDocument::fromJson(payload).object();
    const QString command = answer.value(QLatin1String(TradeKeyFields::CMD)).toString();
    if (answer.value(QLatin1String(TradeKeyFields::STKCODE)).toString() != m_code) {
        return;
    }
    for (Awaited &awaited : m_awaited) {
        if (awaited.commands.contains(command) &&
            holdsSomethingToDraw(answer.value(QLatin1String(TradeKeyFields::DATA)))) {
            ++awaited.drawableAnswers;
        }
    }
    m_answered.append(command);
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
            if (!m_answered.contains(command)) {
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
