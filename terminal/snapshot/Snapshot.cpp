#include "terminal/snapshot/Snapshot.h"

#include "terminal/chart/view/ChartView.h"
#include "terminal/snapshot/Picture.h"
#include "terminal/trade/TradeDocks.h"
#include "terminal/ui/MainWindow.h"

namespace Terminal {

Snapshot::Snapshot(MainWindow *window, const TerminalOptions &options, QObject *parent)
    : QObject(parent),
      m_window(window),
      m_file(options.snapshotFile),
      m_watch(window->screenId(), window->chart()->data(), options.overlays, nullptr)
{
    m_timeout.setSingleShot(true);
    m_timeout.setInterval(options.timeoutSeconds * 1000);
    connect(&m_watch, &AnswerWatch::listening, this, [this] {
        m_listening = true;
        Q_EMIT listening();
    });
    connect(&m_watch, &AnswerWatch::progressed, this, &Snapshot::checkProgress);
    connect(window->trade()->desk(), &OrderDesk::answered, this, &Snapshot::checkProgress);
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

void Snapshot::takeWhenComplete()
{
    m_isDue = true;
    m_hindrance.clear();
    checkProgress();
}

QStringList Snapshot::missing() const
{
    QStringList missing = m_watch.missing();
    if (!m_window->trade()->desk()->isUpToDate()) {
        missing.append(tr("list of orders and positions"));
    }
    return missing;
}

void Snapshot::checkProgress()
{
    if (!m_finished && m_isDue && missing().isEmpty()) {
        finish();
    }
}

void Snapshot::finish()
{
    m_finished = true;
    m_timeout.stop();
    if (m_window->overlays() != nullptr) {
        m_window->overlays()->runUpdates();
    }
    Q_EMIT finished(writePicture(m_window, m_file));
}

void Snapshot::giveUp()
{
    m_finished = true;
    QStringList reasons = missing();
    if (!m_hindrance.isEmpty()) {
        reasons.prepend(m_hindrance);
    }
    Q_EMIT finished(tr("No picture was written: after %1 s there is still no %2.")
                        .arg(m_timeout.interval() / 1000)
                        .arg(reasons.join(QStringLiteral(", "))));
}

} // namespace Terminal
