#include "endpoint/BrokerProcess_p.h"

#include "endpoint/DirectoryLock_p.h"
#include "endpoint/Logging_p.h"
#include "endpoint/Platform_p.h"

#include <QDir>
#include <QSaveFile>
#include <QSignalBlocker>
#include <QStandardPaths>

#include <chrono>

namespace LocalCommunication {

using namespace std::chrono_literals;

namespace {

constexpr auto timeToEnd = 1s;

/// Why each line: the usual queue of 1,000 loses messages of a reader that is only slow, this one takes 37 MB
/// of short messages for a reader that stands still; large ones end at the limit of memory, which the largest
/// message of all still passes (it takes 0.8 GB); some versions refuse packets above 2 MB by default; nothing
/// has to outlive the broker.
const char configuration[] = "# Written by the terminal at every start.\n"
                             "listener 0 bus.sock\n"
                             "allow_anonymous true\n"
                             "max_queued_messages 100000\n"
                             "memory_limit 1073741824\n"
                             "max_packet_size 268435455\n"
                             "persistence false\n"
                             "sys_interval 0\n"
                             "log_type error\n"
                             "log_type warning\n"
                             "log_dest stderr\n";

/// Started by root the broker would give up its rights, and with them its own directory.
const char stayRoot[] = "user root\n";

/// What it says of that at every start is no news.
const char rootWarning[] = "should not be run as root";

QString installedBroker()
{
    const QString name = QStringLiteral("mosquitto");
    const QString inPath = QStandardPaths::findExecutable(name);
    const QStringList usualPlaces{
        QStringLiteral("/usr/sbin"), QStringLiteral("/usr/local/sbin"), QStringLiteral("/opt/homebrew/sbin"),
        QStringLiteral("/opt/homebrew/opt/mosquitto/sbin"), QStringLiteral("/usr/local/opt/mosquitto/sbin")};
    return inPath.isEmpty() ? QStandardPaths::findExecutable(name, usualPlaces) : inPath;
}

} // namespace

BrokerProcess::BrokerProcess(const DirectoryLock &lock, QObject *parent) : QProcess(parent), m_lock(lock)
{
    setProcessChannelMode(QProcess::MergedChannels);
    connect(this, &QProcess::readyRead, this, &BrokerProcess::handleOutput);
    connect(this, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this, &BrokerProcess::handleEnd);
    connect(this, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            Q_EMIT couldNotStart(startProblem());
        }
    });
}

QString BrokerProcess::launch(const QString &program, const QString &directory)
{
    const QString found = program.isEmpty() ? installedBroker() : program;
    if (found.isEmpty()) {
        return QStringLiteral("The program 'mosquitto' is not installed; "
                              "install it with: apt install mosquitto, or: brew install mosquitto");
    }
    // Relative names, because the listener's path may hold neither blanks nor many bytes.
    setWorkingDirectory(directory);
    const QString unwritable = writeConfiguration();
    if (!unwritable.isEmpty()) {
        return unwritable;
    }
    m_lastWords.clear();
    const QSignalBlocker quiet(this); // what fails at once is told by the result
    start(found, {QStringLiteral("-c"), QStringLiteral("mosquitto.conf")});
    return state() == QProcess::NotRunning ? startProblem() : QString();
}

void BrokerProcess::end()
{
    if (state() == QProcess::NotRunning) {
        return;
    }
    const QSignalBlocker quiet(this);
    const int patience = static_cast<int>(std::chrono::milliseconds(timeToEnd).count());
    terminate();
    if (!waitForFinished(patience)) {
        kill();
        waitForFinished(patience);
    }
}

/// Runs in the child, between fork and exec.
void BrokerProcess::setupChildProcess()
{
    m_lock.handDown();
    Platform::endWithParent(m_terminal);
}

/// Empty, or why it cannot be written.
QString BrokerProcess::writeConfiguration() const
{
    QSaveFile file(QDir(workingDirectory()).filePath(QStringLiteral("mosquitto.conf")));
    const QByteArray text = QByteArray(::geteuid() == 0 ? stayRoot : "") + configuration;
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit();
    return isWritten ? QString() : QStringLiteral("'%1': %2").arg(file.fileName(), file.errorString());
}

QString BrokerProcess::startProblem() const
{
    return QStringLiteral("The broker '%1' cannot be started: %2").arg(program(), errorString());
}

/// The broker writes only when something is wrong.
void BrokerProcess::handleOutput()
{
    const QList<QByteArray> lines = readAll().trimmed().split('\n');
    for (const QByteArray &line : lines) {
        if (!line.isEmpty() && !line.contains(rootWarning)) {
            m_lastWords = QString::fromUtf8(line);
            qCWarning(lcBus, "mosquitto: %s", line.constData());
        }
    }
}

void BrokerProcess::handleEnd()
{
    handleOutput();
    Q_EMIT ended(m_lastWords);
}

} // namespace LocalCommunication
