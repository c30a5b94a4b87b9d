#include "terminal/trade/DealNotice.h"

#include "terminal/plugin/UserPrompts.h"
#include "terminal/trade/DesktopNotification.h"

#include <QAction>
#include <QWidget>

#include <utility>

namespace Terminal {

namespace {

QAction *makeSwitch(QObject *owner)
{
    auto *const action = new QAction(owner);
    action->setCheckable(true);
    return action;
}

} // namespace

DealNotice::DealNotice(QWidget *window, UserPrompts *prompts, std::function<void()> sound)
    : m_window(window),
      m_prompts(prompts),
      m_beep(std::move(sound)),
      m_sound(makeSwitch(this)),
      m_desktop(makeSwitch(this))
{
}

void DealNotice::tell(const QString &text)
{
    m_prompts->show(text);
    QApplication::alert(m_window);
    if (m_sound->isChecked()) {
        m_beep();
    }
    if (m_desktop->isChecked() && !m_window->isActiveWindow()) {
        showDesktopNotification(m_window->windowTitle(), text);
    }
}

void DealNotice::showTexts()
{
    m_sound->setText(tr("Sound when an order is dealt"));
    m_desktop->setText(tr("Desktop notification when an order is dealt"));
}

} // namespace Terminal
