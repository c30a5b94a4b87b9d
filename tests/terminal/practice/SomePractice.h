#pragma once

#include "terminal/practice/PracticeBeginning.h"
#include "terminal/practice/PracticeSessions.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/TerminalProgramFixture.h"

#include <gmock/gmock.h>

#include <optional>

namespace Terminal {

/// A user's folder for practices, beside an account with the trades of the sample.
class SomePractice : public Program
{
protected:
    SomePractice()
    {
        m_environment.insert(QStringLiteral("XDG_DATA_HOME"), m_folder.filePath(QStringLiteral("share")));
        m_environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder.filePath(QStringLiteral("config")));
    }

    /// Where a program with this environment keeps practices.
    PracticeSessions sessions() const
    {
        return PracticeSessions(m_folder.filePath(QStringLiteral("share/tradechart/tradeterminal/practice")));
    }

    PracticeWish wish(const char *name = "morning") const
    {
        return {QString::fromUtf8(name), QStringLiteral(TRADECHART_EXAMPLES), QStringLiteral("600536"),
                onDay(20230711), ledger()};
    }

    /// Nothing when it fails; then m_problem says why.
    std::optional<PracticeSession> begin(const PracticeWish &wish,
                                         const QString &module = QStringLiteral(TRADEMODULE))
    {
        PracticeBeginning beginning(sessions(), wish, nullptr);
        std::optional<PracticeSession> begun;
        m_problem.clear();
        QObject::connect(&beginning, &PracticeBeginning::begun, &beginning,
                         [&begun](const PracticeSession &session) { begun = session; });
        QObject::connect(&beginning, &PracticeBeginning::failed, &beginning,
                         [this](const QString &problem) { m_problem = problem.toStdString(); });
        beginning.start(module, QStringLiteral("en"));
        EXPECT_TRUE(waitUntil([&] { return begun || !m_problem.empty(); }));
        return begun;
    }

    static QByteArray contentsOf(const QString &path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
        return file.readAll();
    }

    std::string m_problem;
};

} // namespace Terminal
