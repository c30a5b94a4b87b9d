#include "terminal/trade/DealNotice.h"

#include "terminal/plugin/UserPrompts.h"
#include "terminal/trade/DesktopNotification.h"

#include <QAction>
#include <QStringList>
#include <QWidget>

#include <algorithm>

namespace Terminal {

namespace {

constexpr std::chrono::seconds gathering(2);
constexpr size_t mostLines = 3;

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
    m_pause.setSingleShot(true);
    m_pause.setInterval(gathering);
    connect(&m_pause, &QTimer::timeout, this, &DealNotice::tellGathered);
}

void DealNotice::tell(const QString &orderNumber, const QString &text)
{
    const auto known = std::find_if(m_gathered.begin(), m_gathered.end(),
                                    [&orderNumber](const auto &told) { return told.first == orderNumber; });
    if (known != m_gathered.end()) {
        m_gathered.erase(known);
    }
    m_gathered.emplace_back(orderNumber, text);
    if (m_pause.isActive()) {
        m_isMoreToTell = true;
    } else {
        show(text);
        m_pause.start();
    }
}

void DealNotice::tellGathered()
{
    if (!m_isMoreToTell) {
        m_gathered.clear(); // it has become quiet
        return;
    }
    m_isMoreToTell = false;
    show(gatheredText());
    m_pause.start();
}

void DealNotice::forget()
{
    m_gathered.clear();
    m_isMoreToTell = false;
}

QString DealNotice::gatheredText() const
{
    if (m_gathered.size() > mostLines) {
        return tr("%1 orders were dealt, wholly or in part. The last one:\n%2")
            .arg(m_gathered.size())
            .arg(m_gathered.back().second);
    }
    QStringList lines;
    for (const auto &[number, text] : m_gathered) {
        lines.append(text);
    }
    return lines.join(QLatin1Char('\n'));
}

void DealNotice::show(const QString &text)
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
