#include "terminal/intake/IntakeDoor.h"

#include "terminal/intake/IntakeDialog.h"
#include "terminal/intake/PastImports.h"

#include <QApplication>
#include <QDropEvent>
#include <QFileDialog>

#include <utility>

namespace Terminal {

IntakeDoor::IntakeDoor(QMainWindow *window, Facts facts)
    : m_window(window),
      m_facts(std::move(facts)),
      m_menu(new QMenu(window)),
      m_choose(m_menu->addAction(QString(), this, &IntakeDoor::chooseFiles)),
      m_folder(m_menu->addAction(QString(), this, &IntakeDoor::chooseFolder)),
      m_past(m_menu->addAction(QString(), this, &IntakeDoor::listImports)),
      m_startPage(m_menu->addAction(QString(), this, &IntakeDoor::startPageAsked))
{
    m_choose->setShortcut(QKeySequence::Open);
    m_window->addAction(m_choose); // its key counts while the menu is closed
    m_window->setAcceptDrops(true);
    qApp->installEventFilter(this); // fields of the window take text that is dropped, and files as text
    showTexts();
}

void IntakeDoor::showTexts()
{
    m_menu->setTitle(tr("File"));
    m_choose->setText(tr("Import statement or bars..."));
    m_folder->setText(tr("Import a folder of bars..."));
    m_past->setText(tr("Past imports..."));
    m_startPage->setText(tr("Start page"));
}

bool IntakeDoor::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (watched == m_window && type == QEvent::LanguageChange) {
        showTexts();
    }
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) {
        return false;
    }
    const auto *const widget = qobject_cast<QWidget *>(watched);
    auto *const drop = static_cast<QDropEvent *>(event);
    const QStringList files = droppedFiles(drop->mimeData());
    if (widget == nullptr || widget->window() != m_window || files.isEmpty()) {
        return false;
    }
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (type == QEvent::Drop) {
        bring(files);
    }
    return true;
}

void IntakeDoor::bring(const QStringList &paths)
{
    if (m_dialog != nullptr && m_dialog->isVisible()) {
        if (m_dialog->intake().stage() == Intake::Stage::Asking) {
            m_dialog->add(paths);
        }
        return;
    }
    m_dialog = new IntakeDialog(m_facts.plan(), m_facts.look(), m_window);
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(m_dialog, &IntakeDialog::written, this,
            [this] { Q_EMIT changed(m_dialog->intake().plan().places); });
    connect(m_dialog, &IntakeDialog::accepted, this, [this] {
        if (m_dialog->hasChanged()) {
            Q_EMIT finished(m_dialog->intake().plan().places, m_dialog->takenCodes());
        }
    });
    m_dialog->add(paths);
    m_dialog->open();
}

void IntakeDoor::chooseFiles()
{
    const QStringList files = QFileDialog::getOpenFileNames(m_window, tr("Statements and bars"));
    if (!files.isEmpty()) {
        bring(files);
    }
}

void IntakeDoor::chooseFolder()
{
    const QString folder = QFileDialog::getExistingDirectory(m_window, tr("A folder of bars"));
    if (!folder.isEmpty()) {
        bring(QStringList(folder));
    }
}

/// Those of the account that the window shows; without one, of the account that files would go to.
void IntakeDoor::listImports()
{
    const IntakePlan shown = m_facts.shown();
    const IntakePlan plan = shown.places.ledger.isEmpty() ? m_facts.plan() : shown;
    auto *const list = new PastImports(plan, m_facts.look(), m_window);
    list->setAttribute(Qt::WA_DeleteOnClose);
    connect(list, &PastImports::written, this, [this, places = plan.places] { Q_EMIT changed(places); });
    list->open();
}

} // namespace Terminal
