#pragma once

#include "terminal/intake/Intake.h"
#include "terminal/intake/IntakeStyle.h"

#include <QDialog>
#include <QTimer>

class QLabel;
class QListWidget;
class QMimeData;
class QProgressBar;
class QPushButton;

namespace Terminal {

class FileSheet;

/// Shows an intake: what each file was recognised as, what would come of it, the questions that are open; it
/// imports when the user says so, shows how far it is and what became of it, and takes it back.
///
/// When a stage begins that waits for the user, its buttons and fields take nothing for the time of a double
/// click: the second one was meant for what stood there before.
///
/// Fits on a screen of 800x500; what is longer scrolls. More files may be dropped on it.
class IntakeDialog : public QDialog
{
    Q_OBJECT

public:
    IntakeDialog(const IntakePlan &plan, const IntakeLook &look, QWidget *parent);

    void add(const QStringList &paths) { m_intake.add(paths); }

    const Intake &intake() const { return m_intake; }

    /// Securities that were taken in, those with bars first.
    QStringList takenCodes() const;

    /// True when something that was written has not been taken back.
    bool hasChanged() const { return m_intake.mayUndo(); }

    void reject() override;

Q_SIGNALS:
    /// Something was taken in or back: ledger or data folder are others now.
    void written();

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void setUp();
    void wire();
    void showAll();
    void showList();
    void showSheet();
    void showButtons();
    void showProgress(const QString &step, int done, int of);
    QString summary() const;
    int chosen() const;
    void chooseFiles();
    void takeChange();
    void pauseAtNewStage();
    void endPause();

    Intake m_intake;
    const IntakeLook m_look;
    bool m_hasChosen = false; ///< the user has chosen a file of the list
    Intake::Stage m_shownStage = Intake::Stage::Asking;
    QTimer m_pause; ///< in which buttons that have just come take no click
    QLabel *m_places;
    QListWidget *m_list;
    FileSheet *m_sheet;
    QLabel *m_summary;
    QProgressBar *m_progress;
    QPushButton *m_more;
    QPushButton *m_import;
    QPushButton *m_undo;
    QPushButton *m_close;
};

/// The files and folders that are dropped; empty when something else is.
QStringList droppedFiles(const QMimeData *dropped);

} // namespace Terminal
