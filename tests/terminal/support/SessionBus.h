#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QString>

namespace Terminal {

/// Starts a program and returns the line that it writes when it is ready.
inline QString startAndHear(QProcess *process, const QString &program, const QStringList &arguments)
{
    process->start(program, arguments);
    EXPECT_TRUE(process->waitForStarted()) << qPrintable(program);
    while (!process->canReadLine() && process->waitForReadyRead(20000)) {
    }
    return QString::fromUtf8(process->readLine()).trimmed();
}

/// Starts the message bus of a session and returns its address. What it starts keeps its sockets in a folder
/// of its own: the accessibility buses of two sessions would take each other's.
inline QString startSessionBus(QProcess *process, const QString &runtimeFolder)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtimeFolder);
    process->setProcessEnvironment(environment);
    return startAndHear(
        process, QStringLiteral("dbus-daemon"),
        {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address=1")});
}

inline void endProcess(QProcess *process)
{
    process->terminate();
    EXPECT_TRUE(process->state() == QProcess::NotRunning || process->waitForFinished(20000))
        << qPrintable(process->program());
}

} // namespace Terminal
