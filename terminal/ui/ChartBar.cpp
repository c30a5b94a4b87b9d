#include "terminal/ui/ChartBar.h"

#include "terminal/ui/ViewMenu.h"

#include <QActionGroup>
#include <QComboBox>
#include <QEvent>
#include <QToolButton>

namespace Terminal {

ChartBar::ChartBar(const Securities &securities, const TerminalOptions &options, QWidget *parent)
    : QToolBar(parent),
      m_securities(new QComboBox),
      m_periods(new QActionGroup(this)),
      m_days(new QComboBox)
{
    setObjectName(QStringLiteral("chartBar"));
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    addSecurities(securities);
    addSeparator();
    addPeriods();
    addDays();
    addSeparator();
    addOverlays(options.overlays);
    auto *const gap = new QWidget;
    gap->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(gap);
    addHiding(options.hidesAmounts);
    addView(options);
    showTexts();
}

void ChartBar::addSecurities(const Securities &securities)
{
    setSecurities(securities);
    addWidget(m_securities);
    connect(m_securities, QOverload<int>::of(&QComboBox::activated), this, [this](int row) {
        Q_EMIT chartAsked(m_securities->itemData(row).toString(), m_period, std::nullopt);
    });
}

void ChartBar::setSecurities(const Securities &securities)
{
    m_securities->clear();
    for (const Security &security : securities) {
        m_securities->addItem(security.code + QStringLiteral("  ") + security.name, security.code);
    }
}

void ChartBar::addPeriods()
{
    for (const ChartPeriod period : chartPeriods) {
        QAction *const action = m_periods->addAction(QString());
        action->setCheckable(true);
        action->setData(static_cast<int>(period));
        addAction(action);
        connect(action, &QAction::triggered, this,
                [this, period] { Q_EMIT chartAsked(code(), period, std::nullopt); });
    }
}

void ChartBar::addDays()
{
    m_days->setObjectName(QStringLiteral("shortChoice"));
    m_daysAction = addWidget(m_days);
    connect(m_days, QOverload<int>::of(&QComboBox::activated), this, [this](int row) {
        const int day = m_days->itemData(row).toInt();
        Q_EMIT chartAsked(code(), ChartPeriod::Minute, Trading::TradingDate::ofNumber(day));
    });
}

void ChartBar::addOverlays(const QStringList &chosen)
{
    for (const OverlayKind &kind : overlayKinds()) {
        QAction *const action = addToggle(chosen.contains(QLatin1String(kind.word)));
        action->setEnabled(false);
        m_overlays.push_back(action);
        connect(action, &QAction::toggled, this,
                [this, &kind](bool shown) { Q_EMIT overlayToggled(kind, shown); });
    }
}

void ChartBar::addHiding(bool hides)
{
    m_hiding = addToggle(hides);
    connect(m_hiding, &QAction::toggled, this, &ChartBar::hidingToggled);
}

void ChartBar::addView(const TerminalOptions &options)
{
    m_view = new ViewMenu(options, this);
    m_viewButton = addMenuButton(m_view, nullptr);
}

void ChartBar::addMenu(QMenu *menu)
{
    addMenuButton(menu, m_viewButton);
}

QAction *ChartBar::addMenuButton(QMenu *menu, QAction *before)
{
    auto *const button = new QToolButton;
    button->setMenu(menu);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setDefaultAction(menu->menuAction());
    return insertWidget(before, button);
}

QAction *ChartBar::addToggle(bool checked)
{
    QAction *const action = addAction(QString());
    action->setCheckable(true);
    action->setChecked(checked);
    return action;
}

/// Of the security that is shown.
QString ChartBar::code() const
{
    return m_securities->currentData().toString();
}

void ChartBar::showChart(const ChartData &shown, const std::vector<Trading::TradingDate> &days)
{
    m_period = shown.period;
    m_securities->setCurrentIndex(m_securities->findData(shown.security.code));
    for (QAction *const action : m_periods->actions()) {
        action->setChecked(action->data().toInt() == static_cast<int>(shown.period));
    }
    m_days->clear();
    for (const Trading::TradingDate day : days) {
        m_days->addItem(day.dashedText(), day.number());
    }
    m_daysAction->setVisible(shown.period == ChartPeriod::Minute);
    if (!shown.bars.empty()) {
        m_days->setCurrentIndex(m_days->findData(shown.bars.back().date));
    }
}

void ChartBar::enableOverlays()
{
    for (QAction *const action : m_overlays) {
        action->setEnabled(true);
    }
}

QAction *ChartBar::overlayAction(const OverlayKind &kind) const
{
    return m_overlays[static_cast<size_t>(&kind - overlayKinds().data())];
}

bool ChartBar::isOverlayChosen(const OverlayKind &kind) const
{
    return overlayAction(kind)->isChecked();
}

void ChartBar::setOverlayChosen(const OverlayKind &kind, bool chosen)
{
    overlayAction(kind)->setChecked(chosen);
}

void ChartBar::describeOverlay(const OverlayKind &kind, const QStringList &lines)
{
    QAction *const action = overlayAction(kind);
    const QString text = lines.join(QLatin1Char('\n'));
    action->setToolTip(text.isEmpty() ? overlayTitle(kind) : tr("%1: %2").arg(overlayTitle(kind), text));
    widgetForAction(action)->setAccessibleDescription(text);
}

QStringList ChartBar::chosenOverlays() const
{
    QStringList words;
    for (const OverlayKind &kind : overlayKinds()) {
        if (isOverlayChosen(kind)) {
            words.append(QLatin1String(kind.word));
        }
    }
    return words;
}

bool ChartBar::hidesAmounts() const
{
    return m_hiding->isChecked();
}

void ChartBar::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        showTexts();
    }
    QToolBar::changeEvent(event);
}

void ChartBar::showTexts()
{
    for (QAction *const action : m_periods->actions()) {
        action->setText(periodTitle(static_cast<ChartPeriod>(action->data().toInt())));
    }
    for (const OverlayKind &kind : overlayKinds()) {
        overlayAction(kind)->setText(overlayTitle(kind));
    }
    m_securities->setAccessibleName(tr("Security"));
    m_days->setAccessibleName(tr("Day"));
    m_hiding->setText(tr("Hide amounts"));
    setWindowTitle(tr("Chart"));
}

} // namespace Terminal
