#include "terminal/services/TradeModuleProcess.h"

#include <chrono>

namespace Terminal {

namespace {

constexpr std::chrono::milliseconds restartDelay = std::chrono::seconds(2);
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
                            QStringLiteral("--lang"), language, QStringLiteral("serve")});
    m_process.setProcessChannelMode(QProcess::ForwardedChannels);
    m_restart.setSingleShot(true);
    m_restart.setInterval(restartDelay);
    connect(&m_restart, &QTimer::timeout, this, &TradeModuleProcess::start);
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
    m_process.start();
}

void TradeModuleProcess::handleEnd()
{
    Q_EMIT failed(
        tr("The trading module has ended (exit code %1) and is started again.").arg(m_process.exitCode()));
    m_restart.start();
}

void TradeModuleProcess::handleError(QProcess::ProcessError error)
{
    if (error == QProcess::FailedToStart) {
        Q_EMIT failed(tr("The trading module %1 cannot be started: %2")
                          .arg(m_process.program(), m_process.errorString()));
    }
}

} // namespace Terminal
