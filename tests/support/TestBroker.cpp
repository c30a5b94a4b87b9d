#include "tests/support/TestBroker.h"

#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QFile>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QTimer>

#include <chrono>
#include <csignal>
#include <sys/types.h>
#include <unistd.h>

namespace {

constexpr std::chrono::milliseconds patience = std::chrono::seconds(20);

/// As Qt's processes and sockets want it.
constexpr int inMilliseconds(std::chrono::milliseconds time)
{
    return static_cast<int>(time.count());
}

QString brokerProgram()
{
    const QString found = QStandardPaths::findExecutable(QStringLiteral("mosquitto"));
    return found.isEmpty() ? QStringLiteral("/usr/sbin/mosquitto") : found;
}

void writeLines(const QString &path, const QStringList &lines)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << qPrintable(path);
    file.write(lines.join(QLatin1Char('\n')).toUtf8() + '\n');
}

bool answers(const QString &socketPath)
{
    QLocalSocket probe;
    probe.connectToServer(socketPath);
    return probe.waitForConnected(inMilliseconds(std::chrono::seconds(1)));
}

} // namespace

TestBroker::TestBroker(Begin begin)
    : m_configuration{QStringLiteral("allow_anonymous true"),
                      QStringLiteral("max_queued_messages 1000000000"),
                      QStringLiteral("max_packet_size 268435455"), QStringLiteral("persistence false")}
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    setBusKey(QStringLiteral("url"), QStringLiteral("unix://") + socketPath());
    if (begin == Begin::Running) {
        start();
    }
}

TestBroker::~TestBroker()
{
    if (m_process.state() != QProcess::NotRunning) {
        kill();
    }
}

QString TestBroker::socketPath() const
{
    return m_directory.filePath(QStringLiteral("bus.sock"));
}

void TestBroker::setBusKey(const QString &key, const QString &value)
{
    m_busLines.append(QStringLiteral("%1=%2").arg(key, value));
    writeLines(m_address.filePath(QStringLiteral("endpoint.ini")),
               QStringList{QStringLiteral("[bus]")} + m_busLines);
}

void TestBroker::writeConfiguration()
{
    QStringList lines{QStringLiteral("listener 0 ") + socketPath()};
    if (::geteuid() == 0) {
        lines.append(QStringLiteral("user root")); // else it gives up the rights to its own directory
    }
    writeLines(m_directory.filePath(QStringLiteral("mosquitto.conf")), lines + m_configuration);
}

void TestBroker::start()
{
    writeConfiguration();
    m_process.start(brokerProgram(),
                    {QStringLiteral("-c"), m_directory.filePath(QStringLiteral("mosquitto.conf"))});
    ASSERT_TRUE(m_process.waitForStarted(inMilliseconds(patience))) << qPrintable(m_process.errorString());
    const QDeadlineTimer deadline(patience);
    while (!answers(socketPath())) {
        ASSERT_FALSE(m_process.waitForFinished(2)) << qPrintable(log());
        ASSERT_FALSE(deadline.hasExpired()) << qPrintable(log());
    }
}

void TestBroker::kill()
{
    m_process.kill();
    m_process.waitForFinished(inMilliseconds(patience));
}

void TestBroker::shutDown()
{
    m_process.terminate();
    m_process.waitForFinished(inMilliseconds(patience));
}

void TestBroker::freeze()
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP);
}

void TestBroker::thaw()
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGCONT);
}

QString TestBroker::log()
{
    m_log += QString::fromUtf8(m_process.readAll());
    return m_log;
}
