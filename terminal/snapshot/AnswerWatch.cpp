#include "terminal/snapshot/AnswerWatch.h"

#include "terminal/plugin/HostRecords.h"
#include "tradechartobject/common/TradeVocabulary.h"

namespace Terminal {

namespace {

using namespace TradeChart;

} // namespace

AnswerWatch::AnswerWatch(const ChartData &data, const QStringList &kinds, QObject *parent)
    : QObject(parent),
      m_code(data.security.code)
{
    for (const QString &word : kinds) {
        const OverlayKind *const kind = findOverlayKind(word);
        const int firstCalculation = kind->isCombined() ? 1 : 0;
        m_awaited.push_back({kind, kind->commandsOn(data.period, isTodaysChart(data)), {}, firstCalculation});
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

void AnswerWatch::takeAnswer(const Trading::CheckedAnswer &answer)
{
    for (Awaited &awaited : m_awaited) {
        if (!awaited.kind->isCombined() && awaited.commands.contains(answer.command)) {
            awaited.answered.append(answer.command);
            awaited.drawableAnswers += answer.isDrawable ? 1 : 0;
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
