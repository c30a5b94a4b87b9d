#pragma once

#include "terminal/intake/Intake.h"
#include "terminal/intake/IntakeStyle.h"

#include <QMainWindow>
#include <QMenu>
#include <QPointer>

#include <functional>

namespace Terminal {

class IntakeDialog;

/// The way of statements and bars into a window: the menu "File", and files that are dropped anywhere on it.
class IntakeDoor : public QObject
{
    Q_OBJECT

public:
    /// What the door asks when it is used.
    struct Facts
    {
        std::function<IntakePlan()> plan;  ///< where files go now
        std::function<IntakePlan()> shown; ///< the account that the window shows; its ledger may be empty
        std::function<IntakeLook()> look;
    };

    /// `window` must outlive the door; so must what `facts` ask.
    IntakeDoor(QMainWindow *window, Facts facts);

    /// For a bar of the window.
    QMenu *menu() { return m_menu; }

    /// Opens the dialog with these files and folders; into the one that is open, when one is.
    void bring(const QStringList &paths);
    /// Opens a dialog to choose files.
    void chooseFiles();

Q_SIGNALS:
    /// Ledger or data folder of `places` are others now.
    void changed(const AccountPlaces &places);
    /// The user wants to see the account with what was taken in, of `codes`.
    void finished(const AccountPlaces &places, const QStringList &codes);
    /// The page of the first start is wanted.
    void startPageAsked();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void chooseFolder();
    void listImports();
    void showTexts();

    QMainWindow *m_window;
    Facts m_facts;
    QMenu *m_menu; ///< of the window, whose look it has
    QAction *m_choose;
    QAction *m_folder;
    QAction *m_past;
    QAction *m_startPage;
    QPointer<IntakeDialog> m_dialog;
};

} // namespace Terminal
