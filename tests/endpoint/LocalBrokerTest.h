#pragma once

#include "endpoint/BusAddress.h"
#include "endpoint/LocalBroker.h"
#include "tests/endpoint/BusTest.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <sys/stat.h>
#include <unistd.h>

using LocalCommunication::BusAddress;
using LocalCommunication::LocalBroker;
using State = LocalCommunication::LocalBroker::State;

/// A terminal's directory and a runtime directory of its own.
class LocalBrokerTest : public ::testing::Test
{
protected:
    void SetUp() override { qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_runtime.path())); }
    void TearDown() override { qputenv("XDG_RUNTIME_DIR", m_runtimeBefore); }

    QString address() const { return m_terminal.path(); }
    QString socketPath() const { return BusAddress::ofDirectory(address()).socketPath; }
    QString busDirectory() const { return QFileInfo(socketPath()).path(); }

    static bool waitFor(const LocalBroker &broker, State state)
    {
        return waitUntil([&] { return broker.state() == state; });
    }

    void writeEndPointIni(const QByteArray &text)
    {
        QFile file(m_terminal.filePath(QStringLiteral("endpoint.ini")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

private:
    const QByteArray m_runtimeBefore = qgetenv("XDG_RUNTIME_DIR");
    QTemporaryDir m_terminal;
    QTemporaryDir m_runtime;
};

/// False also for a process whose parent has not picked up its end yet.
inline bool isAlive(pid_t process)
{
    QProcess ps;
    ps.start(QStringLiteral("ps"),
             {QStringLiteral("-o"), QStringLiteral("stat="), QStringLiteral("-p"), QString::number(process)});
    ps.waitForFinished();
    const QByteArray state = ps.readAll().trimmed();
    return !state.isEmpty() && !state.startsWith('Z');
}
