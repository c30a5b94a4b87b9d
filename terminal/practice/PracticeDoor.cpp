#include "terminal/practice/PracticeDoor.h"

#include "terminal/practice/PracticeLock.h"
#include "terminal/services/BusInstance.h"

#include <QEvent>
#include <QProcess>

#include <utility>

namespace Terminal {

PracticeDoor::PracticeDoor(QMainWindow *window, Facts facts)
    : QObject(window),
      m_window(window),
      m_facts(std::move(facts)),
      m_menu(new QMenu(window)),
      m_dialogAction(m_menu->addAction(QString(), this, &PracticeDoor::openDialog))
{
    window->installEventFilter(this);
    showTexts();
}

void PracticeDoor::showTexts()
{
    m_menu->setTitle(tr("Practice"));
    m_dialogAction->setText(tr("Practise a day, or go on with one..."));
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

bool startPracticeWindow(const QString &program, const QString &name, const QString &moduleProgram,
                         const QString &language)
{
    QProcess window;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QLatin1String(busInstanceVariable));
    window.setProcessEnvironment(environment);
    window.setProgram(program);
    window.setArguments({QStringLiteral("--practice"), name, QStringLiteral("--module"), moduleProgram,
                         QStringLiteral("--lang"), language});
    return window.startDetached();
}

} // namespace Terminal
