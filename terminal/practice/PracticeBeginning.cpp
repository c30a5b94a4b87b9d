#include "terminal/practice/PracticeBeginning.h"

#include <QDir>

#include <utility>

namespace Terminal {

PracticeBeginning::PracticeBeginning(PracticeSessions sessions, PracticeWish wish, QObject *parent)
    : QObject(parent),
      m_sessions(std::move(sessions)),
      m_wish(std::move(wish))
{
    connect(&m_module, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &PracticeBeginning::takeEnd);
    connect(&m_module, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            fail(tr("The trading module %1 cannot be started: %2")
                     .arg(m_module.program(), m_module.errorString()));
        }
    });
}

PracticeBeginning::~PracticeBeginning()
{
    m_module.disconnect(this);
    if (m_module.state() != QProcess::NotRunning) {
        m_module.kill();
        m_module.waitForFinished();
    }
    if (!m_room.isEmpty()) {
        m_sessions.giveUp(m_room);
    }
}

void PracticeBeginning::start(const QString &moduleProgram, const QString &language)
{
    m_room = m_sessions.makeRoom();
    if (m_room.isEmpty()) {
        fail(tr("There is no room for the practice: its folder cannot be made."));
        return;
    }
    PracticeSession session{{}, m_room, {}, {}, m_wish.day, {}};
    m_module.setProcessEnvironment(moduleEnvironment(m_wish, session.ledger()));
    m_module.start(moduleProgram, moduleWords(m_wish, language));
}

void PracticeBeginning::takeEnd()
{
    if (m_module.exitStatus() != QProcess::NormalExit || m_module.exitCode() != 0) {
        fail(QString::fromUtf8(m_module.readAllStandardError()).simplified());
        return;
    }
    const PracticeSession session{m_wish.name, m_room,     QDir(m_wish.dataFolder).absolutePath(),
                                  m_wish.code, m_wish.day, QDateTime::currentDateTime()};
    const QString problem = m_sessions.take(session);
    m_room.clear();
    const auto taken = m_sessions.find(m_wish.name);
    if (problem.isEmpty() && taken) {
        Q_EMIT begun(*taken);
    } else {
        fail(problem);
    }
}

void PracticeBeginning::fail(const QString &problem)
{
    Q_EMIT failed(problem);
}

} // namespace Terminal
