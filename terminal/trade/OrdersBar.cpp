#include "terminal/trade/OrdersBar.h"

#include "terminal/trade/ElidedLabel.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>

namespace Terminal {

namespace {

QPushButton *makeButton(const char *name)
{
    auto *const button = new QPushButton;
    button->setObjectName(QLatin1String(name));
    button->setProperty("small", true); // known to the style sheet
    button->setEnabled(false);
    return button;
}

} // namespace

OrdersBar::OrdersBar(QWidget *parent)
    : QWidget(parent),
      m_caption(new ElidedLabel),
      m_scope(new QComboBox),
      m_selected(makeButton("cancelSelected")),
      m_all(makeButton("cancelAll"))
{
    m_caption->setObjectName(QStringLiteral("ordersCaption"));
    m_scope->setObjectName(QStringLiteral("orderScope"));
    m_scope->setProperty("small", true);
    m_scope->addItems({QString(), QString()}); // in the order of OrderScope
    setAttribute(Qt::WA_StyledBackground);
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(8, 0, 4, 0);
    row->setSpacing(4);
    row->addWidget(m_caption, 1);
    row->addWidget(m_scope);
    row->addWidget(m_selected);
    row->addWidget(m_all);
    connect(m_scope, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &OrdersBar::scopeChosen);
    connect(m_selected, &QPushButton::clicked, this, &OrdersBar::cancelSelectedAsked);
    connect(m_all, &QPushButton::clicked, this, &OrdersBar::cancelAllAsked);
    setKnowsWorking(false);
    showTexts();
}

void OrdersBar::setCaption(const QString &caption)
{
    m_caption->setText(caption);
}

void OrdersBar::setKnowsWorking(bool isKnown)
{
    m_scope->setEnabled(isKnown);
    if (!isKnown) {
        setScope(OrderScope::Shown);
    }
}

void OrdersBar::setCancellable(size_t ofSelected, size_t ofAll)
{
    m_selected->setEnabled(ofSelected > 0);
    m_all->setEnabled(ofAll > 0);
}

OrderScope OrdersBar::scope() const
{
    return static_cast<OrderScope>(m_scope->currentIndex());
}

void OrdersBar::setScope(OrderScope scope)
{
    m_scope->setCurrentIndex(static_cast<int>(scope));
}

void OrdersBar::showTexts()
{
    m_scope->setItemText(static_cast<int>(OrderScope::Shown), tr("This security"));
    m_scope->setItemText(static_cast<int>(OrderScope::Working), tr("All working"));
    m_scope->setAccessibleName(tr("Which orders are listed"));
    m_scope->setToolTip(
        tr("The day's orders of the shown security, or the orders of all securities that may still "
           "be dealt"));
    m_selected->setText(tr("Cancel selected…"));
    m_selected->setToolTip(tr("Asks before it cancels the selected orders (Delete in the list)"));
    m_all->setText(tr("Cancel all…"));
    m_all->setToolTip(tr("Asks before it cancels all orders of the list that can be cancelled"));
}

} // namespace Terminal
