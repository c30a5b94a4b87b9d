#include "terminal/snapshot/Snapshot.h"

#include "terminal/answers/ScreenAnswers.h"
#include "terminal/results/ResultsDesk.h"
#include "terminal/session/StatementActions.h"
#include "terminal/snapshot/Picture.h"
#include "terminal/trade/OrderDesk.h"
#include "terminal/trades/TradesDesk.h"
#include "trading/ModuleVocabulary.h"

namespace Terminal {

Snapshot::Snapshot(const Scene &scene, const QString &file, std::chrono::seconds timeout)
    : m_window(scene.window),
      m_answers(scene.answers),
      m_desk(scene.desk),
      m_actions(scene.actions),
      m_results(scene.results),
      m_trades(scene.trades),
      m_file(file),
      m_watch(scene.chart, scene.overlays, nullptr)
{
    m_timeout.setSingleShot(true);
    m_timeout.setInterval(timeout);
    connect(m_answers, &ScreenAnswers::listening, this, &Snapshot::noteListening);
    connect(m_answers, &ScreenAnswers::foundWrong, this, &Snapshot::refuseWrong);
    connect(m_answers, &ScreenAnswers::answered, &m_watch, &AnswerWatch::takeAnswer);
    connect(m_answers, &ScreenAnswers::newsHeard, &m_watch, &AnswerWatch::takeSharedNews);
    connect(&m_watch, &AnswerWatch::progressed, this, &Snapshot::checkProgress);
    connect(m_actions, &StatementActions::answered, this, &Snapshot::checkProgress);
    connect(m_desk, &OrderDesk::answered, this, &Snapshot::checkProgress);
    if (m_results != nullptr) {
        connect(m_results, &ResultsDesk::came, this, &Snapshot::checkProgress);
    }
    if (m_trades != nullptr) {
        connect(m_trades, &TradesDesk::answered, this, &Snapshot::checkProgress);
    }
    connect(&m_timeout, &QTimer::timeout, this, &Snapshot::giveUp);
}

void Snapshot::start()
{
    m_timeout.start();
}

void Snapshot::listen(const QString &address)
{
    m_answers->start(address);
}

void Snapshot::noteListening()
{
    if (m_stage == Stage::Deaf) { // a bus that was lost and found is heard of again
        m_stage = Stage::Listening;
        Q_EMIT listening();
    }
}

void Snapshot::takeWhenComplete()
{
    if (m_stage == Stage::Finished) {
        return;
    }
    m_stage = Stage::Due;
    m_hindrance.clear();
    checkProgress();
}

QStringList Snapshot::missing() const
{
    QStringList missing = m_watch.missing();
    if (!m_desk->isUpToDate()) {
        missing.append(tr("list of orders and positions"));
    }
    if (m_results != nullptr && !m_results->isUpToDate()) {
        missing.append(tr("list of results"));
    }
    if (m_trades != nullptr && !m_trades->isUpToDate()) {
        missing.append(tr("list of trades"));
    }
    if (!m_actions->isUpToDate()) {
        missing.append(tr("the answer to %1").arg(QLatin1String(Trading::CmdType::CORPORATEACTIONS)));
    }
    return missing;
}

void Snapshot::checkProgress()
{
    if (m_stage == Stage::Due && missing().isEmpty()) {
        finish();
    }
}

void Snapshot::finish()
{
    m_stage = Stage::Finished;
    m_timeout.stop();
    Q_EMIT aboutToTake();
    Q_EMIT finished(writePicture(m_window, m_file));
}

/// A picture that lacks a mark, or has a wrong one, is none.
void Snapshot::refuseWrong(const QStringList &faults)
{
    if (m_stage != Stage::Finished) {
        m_stage = Stage::Finished;
        m_timeout.stop();
        Q_EMIT finished(tr("No picture was written: %1").arg(faults.join(QStringLiteral("; "))));
    }
}

void Snapshot::giveUp()
{
    m_stage = Stage::Finished;
    QStringList reasons = missing();
    if (!m_hindrance.isEmpty()) {
        reasons.prepend(m_hindrance);
    }
    Q_EMIT finished(tr("No picture was written: after %1 s these are missing: %2.")
                        .arg(m_timeout.interval() / 1000)
                        .arg(reasons.join(QStringLiteral(", "))));
}

} // namespace Terminal
