#include "terminal/ui/OverlayBar.h"

#include "terminal/trade/PlainText.h"
#include "terminal/ui/HelpMenu.h"
#include "terminal/ui/ViewMenu.h"

#include <QEvent>
#include <QToolButton>

namespace Terminal {

OverlayBar::OverlayBar(const TerminalOptions &options, QWidget *parent) : KeyboardBar(parent)
{
    setObjectName(QStringLiteral("overlayBar"));
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    addOverlays(options.overlays);
    auto *const gap = new QWidget;
    gap->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(gap);
    addView(options);
    showTexts();
}

void OverlayBar::addOverlays(const QStringList &chosen)
{
    for (const OverlayKind &kind : overlayKinds()) {
        QAction *const action = addToggle(chosen.contains(QLatin1String(kind.word)));
        action->setEnabled(false);
        action->setShortcut(Qt::CTRL + Qt::Key_1 + static_cast<int>(m_overlays.size()));
        m_overlays.push_back(action);
        connect(action, &QAction::toggled, this,
                [this, &kind](bool shown) { Q_EMIT overlayToggled(kind, shown); });
    }
}

void OverlayBar::addView(const TerminalOptions &options)
{
    m_view = new ViewMenu(options, this);
    m_viewButton = addMenuButton(m_view, nullptr);
    addMenuButton(new HelpMenu(this), nullptr);
}

void OverlayBar::addMenu(QMenu *menu)
{
    addMenuButton(menu, m_viewButton);
}

QAction *OverlayBar::addMenuButton(QMenu *menu, QAction *before)
{
    auto *const button = new QToolButton;
    button->setMenu(menu);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setDefaultAction(menu->menuAction());
    return insertWidget(before, button);
}

QAction *OverlayBar::addToggle(bool checked)
{
    QAction *const action = addAction(QString());
    action->setCheckable(true);
    action->setChecked(checked);
    return action;
}

void OverlayBar::enableOverlays()
{
    for (QAction *const action : m_overlays) {
        action->setEnabled(true);
    }
}

QAction *OverlayBar::overlayAction(const OverlayKind &kind) const
{
    return m_overlays[static_cast<size_t>(&kind - overlayKinds().data())];
}

bool OverlayBar::isOverlayChosen(const OverlayKind &kind) const
{
    return overlayAction(kind)->isChecked();
}

void OverlayBar::setOverlayChosen(const OverlayKind &kind, bool chosen)
{
    overlayAction(kind)->setChecked(chosen);
}

void OverlayBar::describeOverlay(const OverlayKind &kind, const QStringList &lines)
{
    QAction *const action = overlayAction(kind);
    const QString text = lines.join(QLatin1Char('\n'));
    action->setToolTip(
        plainTip(text.isEmpty() ? overlayTitle(kind) : tr("%1: %2").arg(overlayTitle(kind), text)));
    widgetForAction(action)->setAccessibleDescription(text);
}

QStringList OverlayBar::chosenOverlays() const
{
    QStringList words;
    for (const OverlayKind &kind : overlayKinds()) {
        if (isOverlayChosen(kind)) {
            words.append(QLatin1String(kind.word));
        }
    }
    return words;
}

void OverlayBar::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        showTexts();
    }
    KeyboardBar::changeEvent(event);
}

void OverlayBar::showTexts()
{
    for (const OverlayKind &kind : overlayKinds()) {
        overlayAction(kind)->setText(overlayTitle(kind));
    }
    setWindowTitle(tr("Overlays"));
}

} // namespace Terminal
