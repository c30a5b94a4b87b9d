#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace Terminal {

struct Outcome
{
    int exitCode;
    QString messages;
};

/// Runs `program` to its end.
inline Outcome run(const QString &program, const QStringList &arguments,
                   const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        return {-1, QStringLiteral("did not end: ") + QString::fromUtf8(process.readAllStandardError())};
    }
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2,
            QString::fromUtf8(process.readAllStandardError())};
}

/// A terminal in a folder of its own, which names a bus that nobody else uses.
class Program : public ::testing::Test
{
protected:
    Program()
    {
        m_program = m_folder.filePath(QStringLiteral("tradeterminal"));
        EXPECT_TRUE(QFile::copy(QStringLiteral(TRADETERMINAL), m_program));
        m_environment = QProcessEnvironment::systemEnvironment();
        m_environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_runtime.path());
        m_environment.remove(QStringLiteral("DISPLAY"));
        m_environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
        m_environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    }

    QString picture() const { return m_folder.filePath(QStringLiteral("picture.png")); }
    QString ledger() const { return m_folder.filePath(QStringLiteral("account.db")); }

    Outcome terminal(const QStringList &arguments)
    {
        return run(m_program,
                   QStringList({QStringLiteral("--lang"), QStringLiteral("zh"), QStringLiteral("--data"),
                                QStringLiteral(TRADECHART_EXAMPLES), QStringLiteral("--size"),
                                QStringLiteral("1280x720")}) +
                       arguments,
                   m_environment);
    }

    Outcome snapshot(const QStringList &arguments)
    {
        return terminal(QStringList({QStringLiteral("--snapshot"), picture(), QStringLiteral("--plugin"),
                                     QStringLiteral(PLUGIN_FILE)}) +
                        arguments);
    }

#ifdef TRADEMODULE
    /// On a ledger that is there: an empty account unless a statement was imported.
    QStringList withLedger() const
    {
        makeLedger(ledger());
        return {QStringLiteral("--module"),  QStringLiteral(TRADEMODULE),
                QStringLiteral("--ledger"),  ledger(),
                QStringLiteral("--timeout"), QStringLiteral("40")};
    }

    void makeLedger(const QString &path) const
    {
        if (!QFile::exists(path)) {
            const QStringList millionYuan{QStringLiteral("--ledger"), path, QStringLiteral("account"),
                                          QStringLiteral("--cash"), QStringLiteral("1000000")};
            EXPECT_EQ(run(QStringLiteral(TRADEMODULE), millionYuan, m_environment).exitCode, 0);
        }
    }

    /// A new ledger that practises the recorded day of 600536, with what the account has.
    void makePractice(const QString &path) const
    {
        makeLedger(ledger());
        for (const char *const beside : {"", "-wal", "-shm"}) {
            QFile::remove(path + QLatin1String(beside));
        }
        const QStringList begin{QStringLiteral("--ledger"),
                                path,
                                QStringLiteral("practice"),
                                QStringLiteral("--day"),
                                QStringLiteral("20230711"),
                                QStringLiteral("--copy"),
                                ledger()};
        const Outcome outcome = run(QStringLiteral(TRADEMODULE), begin, m_environment);
        EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);
    }

    QString practice() const
    {
        return m_folder.filePath(QStringLiteral("practice.db"));
    }

    /// On such a ledger.
    QStringList withPractice() const
    {
        makePractice(practice());
        return {QStringLiteral("--module"),  QStringLiteral(TRADEMODULE),
                QStringLiteral("--ledger"),  practice(),
                QStringLiteral("--timeout"), QStringLiteral("40")};
    }

    void importStatement()
    {
        const Outcome outcome = run(QStringLiteral(TRADEMODULE),
                                    {QStringLiteral("--ledger"), ledger(), QStringLiteral("import"),
                                     QStringLiteral(TRADECHART_EXAMPLES "/statement.csv")},
                                    m_environment);
        ASSERT_EQ(outcome.exitCode, 0) << qPrintable(outcome.messages);
    }
#endif

    QTemporaryDir m_folder;
    QTemporaryDir m_runtime;
    QString m_program;
    QProcessEnvironment m_environment;
};

} // namespace Terminal
