#include "terminal/snapshot/Snapshot.h"

#include "terminal/snapshot/Picture.h"
#include "terminal/trade/OrderDesk.h"

namespace Terminal {

Snapshot::Snapshot(const Scene &scene, const QString &file, std::chrono::seconds timeout)
    : m_window(scene.window),
      m_desk(scene.desk),
      m_file(file),
      m_watch(scene.screenId, scene.chart, scene.overlays, nullptr)
{
    m_timeout.setSingleShot(true);
    m_timeout.setInterval(timeout);
    connect(&m_watch, &AnswerWatch::listening, this, &Snapshot::noteListening);
    connect(&m_watch, &AnswerWatch::progressed, this, &Snapshot::checkProgress);
    connect(m_desk, &OrderDesk::answered, this, &Snapshot::checkProgress);
    connect(&m_timeout, &QTimer::timeout, this, &Snapshot::giveUp);
}

void Snapshot::start()
{
    m_timeout.start();
}

void Snapshot::listen(const QString &address)
{
    m_watch.start(address);
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

void Snapshot::giveUp()
{
    m_stage = Stage::Finished;
    QStringList reasons = missing();
    if (!m_hindrance.isEmpty()) {
        reasons.prepend(m_hindrance);
    }
    Q_EMIT finished(tr("No picture was written: after %1 s there is still no %2.")
                        .arg(m_timeout.interval() / 1000)
                        .arg(reasons.join(QStringLiteral(", "))));
}

} // namespace Terminal
