#include "terminal/services/TradeModuleProcess.h"

#include "terminal/services/LedgerAdvice.h"
#include "trading/HiddenPasswords.h"

#include <QFileInfo>

#include <algorithm>
#include <cstdio>

namespace Terminal {

namespace {

constexpr std::chrono::milliseconds longestPause = std::chrono::minutes(1);
/// One that has lived so long served for a while: its end is news even if the last one ended for the same
/// reason.
constexpr std::chrono::milliseconds longLife = std::chrono::seconds(10);
/// A terminal that is told to end has two seconds in all. A module that is killed loses nothing.
constexpr std::chrono::milliseconds stopPatience(1500);

/// Enough for the reason of an end.
constexpr int mostWords = 4096;

bool waitForEnd(QProcess *process)
{
    return process->waitForFinished(static_cast<int>(stopPatience.count()));
}

/// A database's reason may have several lines; the module's name begins each of its own messages.
QString lastWordsOf(const QByteArray &words)
{
    const int begin = std::max(0, words.lastIndexOf("trademodule: "));
    return QString::fromUtf8(words.mid(begin)).simplified();
}

} // namespace

TradeModuleProcess::TradeModuleProcess(const QString &program, const QString &ledger,
                                       const QString &busAddress, const QString &language, QObject *parent,
                                       std::chrono::milliseconds pause)
    : QObject(parent),
      m_ledger(ledger),
      m_firstPause(pause)
{
    m_process.setProgram(program);
    m_process.setArguments({QStringLiteral("--bus"), busAddress, QStringLiteral("--lang"), language,
                            QStringLiteral("serve"), QStringLiteral("--standby")});
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(Trading::ledgerVariable), ledger);
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedOutputChannel);
    m_restart.setInterval(pause);
    connect(&m_restart, &QTimer::timeout, this, &TradeModuleProcess::startWhenDue);
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
    m_restart.stop();
    m_hangs = false;
    m_words.clear();
    m_sinceStart.start();
    m_process.start();
}

/// By SIGKILL: a process that was stopped hears nothing else.
void TradeModuleProcess::replace()
{
    m_hangs = true;
    m_process.kill();
}

/// What the module says of itself goes where it always went; its last words are why it ended.
void TradeModuleProcess::passWordsOn()
{
    const QByteArray words = m_process.readAllStandardError();
    std::fwrite(words.constData(), 1, static_cast<std::size_t>(words.size()), stderr);
    m_words = (m_words + words).right(mostWords);
}

void TradeModuleProcess::handleEnd()
{
    passWordsOn();
    pauseAndTell(reasonOfEnd());
}

/// A module that cannot serve is tried for as long as that lasts. The user is told once, not at every try.
void TradeModuleProcess::pauseAndTell(const QString &reason)
{
    const bool livedLong = m_sinceStart.elapsed() > longLife.count();
    const bool isNews = reason != m_toldReason || livedLong;
    m_pause = livedLong ? m_firstPause : std::clamp(2 * m_pause, m_firstPause, longestPause);
    m_toldReason = reason;
    m_stampsAtEnd = stamps();
    m_sinceEnd.start();
    m_restart.start();
    if (isNews) {
        Q_EMIT failed(reason);
    }
}

void TradeModuleProcess::startWhenDue()
{
    if (stamps() != m_stampsAtEnd) {
        m_pause = {};
    }
    if (m_sinceEnd.elapsed() >= m_pause.count()) {
        start();
    }
}

/// Of what the module may have ended for.
QVector<FileStamp> TradeModuleProcess::stamps() const
{
    return {FileStamp::of(m_ledger), FileStamp::of(m_process.program())};
}

QString TradeModuleProcess::reasonOfEnd() const
{
    if (m_hangs) {
        return tr("The trading module did not answer any more; another one is started in its place.");
    }
    // One that was killed said nothing of it: its last words are about something else.
    const bool hasSaidWhy = m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() != 0;
    const QString lastWords = hasSaidWhy ? lastWordsOf(m_words) : QString();
    if (lastWords.isEmpty()) {
        return tr("The trading module has ended (exit code %1) and is started again.")
            .arg(m_process.exitCode());
    }
    const QString advice = ledgerAdvice(lastWords);
    const QString reason = tr("The trading module has ended and is started again: %1").arg(lastWords);
    return advice.isEmpty() ? reason : reason + QLatin1Char('\n') + advice;
}

void TradeModuleProcess::handleError(QProcess::ProcessError error)
{
    if (error == QProcess::FailedToStart) {
        pauseAndTell(reasonOfNoStart());
    }
}

QString TradeModuleProcess::reasonOfNoStart() const
{
    const QFileInfo program(m_process.program());
    if (!program.exists()) {
        return tr("The program of the trading module, %1, is not there: install it, or name it with "
                  "--module.")
            .arg(program.filePath());
    }
    if (!program.isFile() || !program.isExecutable()) {
        return tr("The file %1 is no program that may be run: name that of the trading module with --module.")
            .arg(program.filePath());
    }
    return tr("The trading module %1 cannot be started: %2").arg(program.filePath(), m_process.errorString());
}

} // namespace Terminal
