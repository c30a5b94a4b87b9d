#include "terminal/practice/PracticeDoor.h"

#include "terminal/practice/PracticeLock.h"
#include "terminal/services/BusInstance.h"

#include <QEvent>
#include <QFileInfo>
#include <QProcess>

#include <utility>

namespace Terminal {

PracticeDoor::PracticeDoor(QMainWindow *window, Facts facts)
    : QObject(window),
      m_window(window),
      m_facts(std::move(facts)),
      m_action(new QAction(window))
{
    connect(m_action, &QAction::triggered, this, &PracticeDoor::openDialog);
    window->installEventFilter(this);
    showTexts();
}

void PracticeDoor::showTexts()
{
    m_action->setText(tr("Practise a day..."));
}

bool PracticeDoor::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_window && event->type() == QEvent::LanguageChange) {
        showTexts();
    }
    return false;
}

void PracticeDoor::openDialog()
{
    if (m_dialog != nullptr && m_dialog->isVisible()) {
        m_dialog->raise();
        return;
    }
    m_dialog = new PracticeDialog(PracticeSessions::ofUser(), m_facts.offer(), m_window);
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(m_dialog, &PracticeDialog::chosen, this, &PracticeDoor::openSession);
    m_dialog->open();
}

QString PracticeDoor::hindrance(const PracticeSession &session)
{
    if (!QFileInfo(session.dataFolder).isDir()) {
        return tr("The bars of the practice are not there any more: %1").arg(session.dataFolder);
    }
    PracticeLock lock(session);
    return lock.acquire() ? QString() : lock.problem();
}

void PracticeDoor::openSession(const PracticeSession &session)
{
    const QString problem = hindrance(session);
    if (!problem.isEmpty()) {
        m_dialog->showNotice(problem);
    } else if (m_facts.open(session.name)) {
        m_dialog->accept();
    } else {
        m_dialog->showNotice(tr("The window of the practice cannot be started."));
    }
}

bool startPracticeWindow(const QString &program, const QString &name, const QStringList &options)
{
    QProcess window;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QLatin1String(busInstanceVariable));
    window.setProcessEnvironment(environment);
    window.setProgram(program);
    window.setArguments(QStringList({QStringLiteral("--practice"), name}) + options);
    return window.startDetached();
}

} // namespace Terminal
