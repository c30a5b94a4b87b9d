#include "terminal/ui/ChartBar.h"

#include "terminal/ui/SecurityBox.h"

#include <QActionGroup>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>

namespace Terminal {

ChartBar::ChartBar(const Securities &securities, bool hidesAmounts, QWidget *parent)
    : KeyboardBar(parent),
      m_securities(new SecurityBox),
      m_periods(new QActionGroup(this)),
      m_days(new QComboBox),
      m_hiding(new QAction(this))
{
    setObjectName(QStringLiteral("chartBar"));
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    addSecurities(securities);
    addSeparator();
    addPeriods();
    addDays();
    addSeparator();
    addAction(m_hiding);
    m_hiding->setCheckable(true);
    m_hiding->setChecked(hidesAmounts);
    m_hiding->setShortcut(Qt::CTRL + Qt::Key_H);
    connect(m_hiding, &QAction::toggled, this, &ChartBar::hidingToggled);
    showTexts();
}

void ChartBar::addSecurities(const Securities &securities)
{
    setSecurities(securities);
    addWidget(m_securities);
    connect(m_securities, &SecurityBox::codeChosen, this,
            [this](const QString &chosen) { Q_EMIT chartAsked(chosen, m_period, std::nullopt); });
    connect(m_securities, &SecurityBox::left, this, &ChartBar::left);
}

void ChartBar::setSecurities(const Securities &securities)
{
    m_securities->setSecurities(securities);
}

void ChartBar::addPeriods()
{
    for (const ChartPeriod period : chartPeriods) {
        QAction *const action = m_periods->addAction(QString());
        action->setCheckable(true);
        action->setData(static_cast<int>(period));
        action->setShortcut(Qt::ALT + Qt::Key_1 + m_periods->actions().size() - 1);
        addAction(action);
        connect(action, &QAction::triggered, this,
                [this, period] { Q_EMIT chartAsked(code(), period, std::nullopt); });
    }
}

bool ChartBar::hidesAmounts() const
{
    return m_hiding->isChecked();
}

void ChartBar::beginSearch(const QString &typed)
{
    m_securities->beginSearch(typed);
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

/// Of the security that is shown.
QString ChartBar::code() const
{
    return m_securities->shownCode();
}

void ChartBar::showChart(const ChartData &shown, const std::vector<Trading::TradingDate> &days)
{
    m_period = shown.period;
    m_securities->showSecurity(shown.security.code);
    for (QAction *const action : m_periods->actions()) {
        action->setChecked(action->data().toInt() == static_cast<int>(shown.period));
    }
    m_days->clear();
    for (const Trading::TradingDate day : days) {
        m_days->addItem(day.dashedText(), day.number());
    }
    showRecorded(shown);
    m_daysAction->setVisible(shown.period == ChartPeriod::Minute);
    if (!shown.bars.empty()) {
        m_days->setCurrentIndex(m_days->findData(shown.bars.back().date));
    }
}

/// What is replayed counts as today, and is found as the last day.
void ChartBar::showRecorded(const ChartData &shown)
{
    if (!shown.recorded || m_days->count() == 0) {
        return;
    }
    const QString day = shown.recorded->dashedText();
    const bool isListed = m_days->findText(day) >= 0;
    m_days->setItemText(m_days->count() - 1, isListed ? tr("%1, replayed").arg(day) : day);
}

void ChartBar::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        showTexts();
    }
    KeyboardBar::changeEvent(event);
}

void ChartBar::showTexts()
{
    for (QAction *const action : m_periods->actions()) {
        action->setText(periodTitle(static_cast<ChartPeriod>(action->data().toInt())));
        action->setToolTip(
            tr("Shows the chart so (%1)").arg(action->shortcut().toString(QKeySequence::NativeText)));
    }
    m_securities->setAccessibleName(tr("Security"));
    m_securities->lineEdit()->setAccessibleName(tr("Security"));
    m_securities->setToolTip(
        tr("Type a part of the code or name, or the first letters of its syllables (Ctrl+L)"));
    m_days->setAccessibleName(tr("Day"));
    m_days->setToolTip(tr("The recorded day that the minutes are of"));
    m_hiding->setText(tr("Hide amounts"));
    m_hiding->setToolTip(tr("Shows no figure of the account, so that others may look on"));
    setWindowTitle(tr("Chart"));
}

} // namespace Terminal
