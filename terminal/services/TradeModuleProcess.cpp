#include "terminal/services/TradeModuleProcess.h"

#include <chrono>
#include <cstdio>

namespace Terminal {

namespace {

constexpr std::chrono::milliseconds restartDelay = std::chrono::seconds(2);
/// One that has lived so long served for a while: its end is news even if the last one ended for the same
/// reason.
constexpr std::chrono::milliseconds longLife = std::chrono::seconds(10);
constexpr std::chrono::milliseconds stopPatience = std::chrono::seconds(3);

bool waitForEnd(QProcess *process)
{
    return process->waitForFinished(static_cast<int>(stopPatience.count()));
}

} // namespace

TradeModuleProcess::TradeModuleProcess(const QString &program, const QString &ledger,
                                       const QString &busAddress, const QString &language, QObject *parent)
    : QObject(parent)
{
    m_process.setProgram(program);
    m_process.setArguments({QStringLiteral("--bus"), busAddress, QStringLiteral("--ledger"), ledger,
                            QStringLiteral("--lang"), language, QStringLiteral("serve"),
                            QStringLiteral("--standby")});
    m_process.setProcessChannelMode(QProcess::ForwardedOutputChannel);
    m_restart.setSingleShot(true);
    m_restart.setInterval(restartDelay);
    connect(&m_restart, &QTimer::timeout, this, &TradeModuleProcess::start);
    connect(&m_process, &QProcess::readyReadStandardError, this, &TradeModuleProcess::passWordsOn);
    connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &TradeModuleProcess::handleEnd);
    connect(&m_process, &QProcess::errorOccurred, this, &TradeModuleProcess::handleError);
}

TradeModuleProcess::~TradeModuleProcess()
{
    m_process.disconnect(this);
    if (m_process.state() == QProcess::NotRunning) {
        return;
    }
    m_process.terminate();
    if (!waitForEnd(&m_process)) {
        m_process.kill();
        waitForEnd(&m_process);
    }
}

void TradeModuleProcess::start()
{
    m_lastWords.clear();
    m_sinceStart.start();
    m_process.start();
}

/// What the module says of itself goes where it always went; its last words are why it ended.
void TradeModuleProcess::passWordsOn()
{
    const QByteArray words = m_process.readAllStandardError();
    std::fwrite(words.constData(), 1, static_cast<std::size_t>(words.size()), stderr);
    const QByteArray lastLine = words.trimmed().split('\n').last();
    if (!lastLine.isEmpty()) {
        m_lastWords = QString::fromUtf8(lastLine);
    }
}

/// A module that cannot serve, because another one does, say, is tried for as long as that lasts: it goes on
/// when the other ends. The user is told once, not at every try.
void TradeModuleProcess::handleEnd()
{
    passWordsOn();
    const QString reason = m_lastWords.isEmpty()
                               ? tr("The trading module has ended (exit code %1) and is started again.")
                                     .arg(m_process.exitCode())
                               : tr("The trading module has ended and is started again: %1").arg(m_lastWords);
    const bool isNews = reason != m_toldReason || m_sinceStart.elapsed() > longLife.count();
    m_toldReason = reason;
    m_restart.start();
    if (isNews) {
        Q_EMIT failed(reason);
    }
}

void TradeModuleProcess::handleError(QProcess::ProcessError error)
{
    if (error == QProcess::FailedToStart) {
        Q_EMIT failed(tr("The trading module %1 cannot be started: %2")
                          .arg(m_process.program(), m_process.errorString()));
    }
}

} // namespace Terminal
