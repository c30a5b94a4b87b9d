#pragma once

#include "terminal/practice/PracticeDialog.h"

#include <QAction>
#include <QMainWindow>
#include <QPointer>

#include <functional>

namespace Terminal {

/// The way from a window to practice: an action, and the dialog that begins and lists sessions.
/// Each is opened in a window of its own, by another process of the terminal, so that this window stays as it
/// is.
class PracticeDoor : public QObject
{
    Q_OBJECT

public:
    /// What the door asks when it is used.
    struct Facts
    {
        std::function<PracticeOffer()> offer;
        /// Opens the session of this name in a window of its own; false when that cannot be started.
        std::function<bool(const QString &name)> open;
    };

    /// `window` must outlive the door; so must what `facts` ask.
    PracticeDoor(QMainWindow *window, Facts facts);

    /// For a menu of the window.
    QAction *action() { return m_action; }

    void openDialog();

    /// Why a window on this session cannot be opened now, for the user; empty when it can.
    static QString hindrance(const PracticeSession &session);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showTexts();
    void openSession(const PracticeSession &session);

    QMainWindow *m_window;
    Facts m_facts;
    QAction *m_action;
    QPointer<PracticeDialog> m_dialog;
};

/// Starts another process of the terminal, `program`, on a session, with more `options` on its command line.
/// On no bus but its own. False when it cannot be started.
bool startPracticeWindow(const QString &program, const QString &name, const QStringList &options);

} // namespace Terminal
