#pragma once

#include <QApplication>
#include <QObject>

#include <functional>

class QAction;
class QWidget;

namespace Terminal {

class UserPrompts;

/// Says that an order was dealt so that it is noticed: a message in the window, its task bar entry, and, as
/// the user wishes, a sound, and a notification of the desktop where the window does not have the keyboard.
class DealNotice : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive this object; `sound` is the one that is heard.
    DealNotice(QWidget *window, UserPrompts *prompts, std::function<void()> sound = &QApplication::beep);

    /// The switches, both off at first.
    QAction *soundAction() const { return m_sound; }
    QAction *desktopAction() const { return m_desktop; }

    void tell(const QString &text);
    void showTexts();

private:
    QWidget *m_window;
    UserPrompts *m_prompts;
    std::function<void()> m_beep;
    QAction *m_sound;
    QAction *m_desktop;
};

} // namespace Terminal
