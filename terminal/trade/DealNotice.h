#pragma once

#include <QApplication>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <utility>
#include <vector>

class QAction;
class QWidget;

namespace Terminal {

class UserPrompts;

/// Says that an order was dealt so that it is noticed: a message in the window, its task bar entry, and, as
/// the user wishes, a sound, and a notification of the desktop where the window does not have the keyboard.
///
/// The first deal is told at once. Those of the next seconds are gathered and told together, each order with
/// its latest state: none takes the place of another, and a flood of fills makes no flood of notices.
class DealNotice : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive this object; `sound` is the one that is heard.
    DealNotice(QWidget *window, UserPrompts *prompts, std::function<void()> sound = &QApplication::beep);

    /// The switches, both off at first.
    QAction *soundAction() const { return m_sound; }
    QAction *desktopAction() const { return m_desktop; }

    /// `text` says how far the order of this number is dealt now.
    void tell(const QString &orderNumber, const QString &text);
    /// What was gathered is not to be told any more.
    void forget();
    void showTexts();

    /// How long is gathered; two seconds at first.
    void setPause(std::chrono::milliseconds pause) { m_pause.setInterval(pause); }

private:
    void tellGathered();
    void show(const QString &text);
    QString gatheredText() const;

    QWidget *m_window;
    UserPrompts *m_prompts;
    std::function<void()> m_beep;
    QAction *m_sound;
    QAction *m_desktop;
    QTimer m_pause;
    std::vector<std::pair<QString, QString>>
        m_gathered; ///< an order's number and text, the latest at the end
    bool m_isMoreToTell = false;
};

} // namespace Terminal
