#include "terminal/trade/OrdersPanel.h"

#include "terminal/trade/OrdersView.h"
#include "terminal/trade/SharedWidth.h"

#include <QEvent>
#include <QLabel>
#include <QVBoxLayout>

namespace Terminal {

namespace {

constexpr int panelHeight = 190;

} // namespace

OrdersPanel::OrdersPanel(QWidget *parent)
    : QWidget(parent),
      m_ordersCaption(new QLabel),
      m_accountCaption(new QLabel),
      m_ordersView(new OrdersView(&m_orders)),
      m_positionsView(new RecordView(&m_positions, static_cast<int>(PositionColumn::Name))),
      m_halves(new SharedWidth)
{
    m_positionsView->setObjectName(QStringLiteral("positionsView"));
    m_positionsView->setSelectionMode(QAbstractItemView::NoSelection);
    connect(m_ordersView, &OrdersView::rowsSelected, this, &OrdersPanel::selectionChanged);
    connect(m_ordersView, &OrdersView::cancelAsked, this, &OrdersPanel::cancelAsked);
    m_halves->add(m_ordersCaption, m_ordersView);
    m_halves->add(m_accountCaption, m_positionsView);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_halves);
    showTexts();
}

QByteArray OrdersPanel::sharing() const
{
    return m_halves->sharing();
}

void OrdersPanel::restoreSharing(const QByteArray &sharing)
{
    m_halves->restoreSharing(sharing);
}

QSize OrdersPanel::sizeHint() const
{
    return {QWidget::sizeHint().width(), panelHeight};
}

void OrdersPanel::setOrders(const OrderRecords &orders, std::optional<Trading::TradingDate> day)
{
    const OrderRecords before = selected();
    const bool isOtherDay = m_day != day;
    m_day = day;
    m_orders.setOrders(orders);
    if (!isOtherDay && selected().size() != before.size()) {
        select(before); // the rows were reset
    }
    showTexts();
    Q_EMIT selectionChanged();
}

void OrdersPanel::setAccount(const std::optional<Account> &account)
{
    m_account = account;
    showAccount();
}

void OrdersPanel::setLastPrice(const Security &security, std::optional<double> price)
{
    m_shownSecurity = security;
    m_lastPrice = price;
    showAccount();
}

void OrdersPanel::setAnswering(bool isAnswering)
{
    m_isAnswering = isAnswering;
    showTexts();
}

void OrdersPanel::setTheme(const ChartTheme &theme)
{
    m_orders.setTheme(theme);
    m_positions.setTheme(theme);
}

void OrdersPanel::setAmountsHidden(bool hidden)
{
    m_hidesAmounts = hidden;
    m_orders.setAmountsHidden(hidden);
    m_positions.setAmountsHidden(hidden);
    showAccount();
}

void OrdersPanel::showAccount()
{
    std::vector<PricedPosition> rows;
    for (const Position &position : m_account ? m_account->positions : std::vector<Position>()) {
        const bool isShown = position.security.id() == m_shownSecurity.id();
        rows.push_back({position, isShown ? m_lastPrice : std::nullopt});
        if (isShown && position.security.name.isEmpty()) {
            rows.back().position.security.name =
                m_shownSecurity.name; // the module knows names of statements only
        }
    }
    m_positions.setRecords(std::move(rows));
    const auto money = [this](double yuan) { return shownAmount(amountText(yuan), m_hidesAmounts); };
    m_accountCaption->setText(
        m_account
            ? tr("Positions · cash %1, available %2").arg(money(m_account->cash), money(m_account->available))
            : tr("Positions"));
    m_halves->shareByNeed();
}

void OrdersPanel::showTexts()
{
    const QString title = m_day ? tr("Orders of %1").arg(m_day->dashedText()) : tr("Today's orders");
    m_ordersCaption->setText(m_isAnswering ? title : tr("%1 · no answer from the trading module").arg(title));
    m_ordersView->setAccessibleName(title);
    m_positionsView->setAccessibleName(tr("Positions"));
    showAccount();
}

void OrdersPanel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        m_orders.retranslate();
        m_positions.retranslate();
        showTexts();
    }
    QWidget::changeEvent(event);
}

void OrdersPanel::select(const OrderRecords &orders)
{
    m_ordersView->select(orders);
}

OrderRecords OrdersPanel::selected() const
{
    return m_ordersView->selected();
}

void OrdersPanel::focusOrders()
{
    m_ordersView->focusRows();
}

} // namespace Terminal
