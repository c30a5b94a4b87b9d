#pragma once

#include <QImage>
#include <QProcess>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace Terminal {

/// A screen of common density that nobody sees, with a keyboard, and the message bus of a session, for
/// programs that a test starts. There is no window manager: the test says which window has the keyboard.
class PrivateDesktop
{
public:
    /// The first of the programs that it needs and this machine lacks; empty: it has them all.
    static QString missing();

    explicit PrivateDesktop(const QSize &screen);
    ~PrivateDesktop();

    /// Programs with this environment are on the desktop, and tell a screen reader what they show.
    QProcessEnvironment environment(QProcessEnvironment base) const;
    /// Of the session's message bus.
    const QString &busAddress() const { return m_busAddress; }

    /// Waits for a window with this title and gives it the keyboard.
    void focusWindow(const QString &title) const;
    /// Presses keys one after the other, as X calls them: "F1", "Return", "shift+Tab".
    void press(const QStringList &keys) const;
    void type(const QString &text) const;

    /// What the screen shows now.
    QImage picture() const;

private:
    void run(const QStringList &arguments) const;

    QTemporaryDir m_folder;
    QProcess m_screen;
    QProcess m_bus;
    QString m_display;
    QString m_busAddress;
};

} // namespace Terminal
