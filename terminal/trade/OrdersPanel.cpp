#include "terminal/trade/OrdersPanel.h"

#include "terminal/trade/ElidedLabel.h"
#include "terminal/trade/OrdersBar.h"
#include "terminal/trade/OrdersView.h"
#include "terminal/trade/PositionsView.h"
#include "terminal/trade/SharedWidth.h"

#include <QEvent>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>

namespace Terminal {

namespace {

constexpr int panelHeight = 190;
constexpr int leastHeight = 138; ///< tabs, filter, titles and two rows
constexpr int partsOfWindow = 4;

} // namespace

OrdersPanel::OrdersPanel(QWidget *parent)
    : QWidget(parent),
      m_ordersBar(new OrdersBar),
      m_accountCaption(new ElidedLabel),
      m_ordersView(new OrdersView(&m_orders)),
      m_positionsView(new PositionsView(&m_positions)),
      m_halves(new SharedWidth)
{
    setUpOrders();
    connect(m_positionsView, &PositionsView::chartAsked, this, &OrdersPanel::chartAsked);
    connect(m_positionsView, &PositionsView::tradesAsked, this, &OrdersPanel::tradesAsked);
    connect(m_positionsView, &PositionsView::closeAsked, this, &OrdersPanel::closeAsked);
    m_halves->add(m_ordersBar, m_ordersView);
    m_halves->add(m_accountCaption, m_positionsView);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_halves);
    showTexts();
}

void OrdersPanel::setUpOrders()
{
    connect(m_ordersView, &OrdersView::rowsSelected, this, &OrdersPanel::selectionChanged);
    connect(m_ordersView, &OrdersView::cancelAsked, this, &OrdersPanel::cancelAsked);
    connect(m_ordersView, &OrdersView::priceAsked, this, &OrdersPanel::priceAsked);
    connect(m_ordersView, &OrdersView::placeAsked, this, &OrdersPanel::placeAsked);
    connect(m_ordersBar, &OrdersBar::scopeChosen, this, &OrdersPanel::listOrders);
    connect(m_ordersBar, &OrdersBar::cancelSelectedAsked, this,
            [this] { Q_EMIT cancelAsked(m_ordersView->selectedToCancel()); });
    connect(m_ordersBar, &OrdersBar::cancelAllAsked, this, [this] { Q_EMIT cancelAsked(cancellable()); });
    connect(this, &OrdersPanel::selectionChanged, this, &OrdersPanel::showCancellable);
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
    return {QWidget::sizeHint().width(),
            std::clamp(window()->height() / partsOfWindow, leastHeight, panelHeight)};
}

QSize OrdersPanel::minimumSizeHint() const
{
    return {QWidget::minimumSizeHint().width(), leastHeight};
}

void OrdersPanel::setOrders(const OrderRecords &orders, std::optional<Trading::TradingDate> day)
{
    const bool isOtherDay = m_day != day;
    m_day = day;
    m_shownOrders = orders;
    if (isOtherDay) {
        m_ordersView->clearSelection();
    }
    listOrders();
}

void OrdersPanel::setWorkingOrders(const std::optional<OrderRecords> &orders)
{
    m_working = orders;
    m_ordersBar->setKnowsWorking(orders.has_value());
    if (m_ordersBar->scope() == OrderScope::Working) {
        listOrders();
    }
}

void OrdersPanel::listWorkingOrders()
{
    m_ordersBar->setScope(OrderScope::Working);
}

void OrdersPanel::listOrders()
{
    const OrderRecords before = selected();
    const bool listsWorking = m_ordersBar->scope() == OrderScope::Working;
    m_orders.setOrders(listsWorking ? m_working.value_or(OrderRecords()) : m_shownOrders);
    m_ordersView->setNamesSecurities(listsWorking);
    if (selected().size() != before.size()) {
        select(before); // the rows were reset
    }
    showTexts();
    Q_EMIT selectionChanged();
}

OrderRecords OrdersPanel::cancellable() const
{
    OrderRecords orders;
    std::copy_if(m_orders.records().begin(), m_orders.records().end(), std::back_inserter(orders),
                 [](const OrderRecord &order) { return isCancellable(order); });
    return orders;
}

void OrdersPanel::showCancellable()
{
    m_ordersBar->setCancellable(m_ordersView->selectedToCancel().size(), cancellable().size());
}

void OrdersPanel::setAccount(const std::optional<Account> &account)
{
    if (!(account == m_account)) {
        m_account = account;
        showAccount();
    }
}

void OrdersPanel::setPrices(LastPriceOf lastPrice)
{
    m_lastPrice = std::move(lastPrice);
    showAccount();
}

void OrdersPanel::setShownSecurity(const Security &security)
{
    m_shownSecurity = security;
    showAccount();
}

void OrdersPanel::setRefusals(const QString &ofOrders, const QString &ofAccount)
{
    if (ofOrders != m_ordersRefusal || ofAccount != m_accountRefusal) {
        m_ordersRefusal = ofOrders;
        m_accountRefusal = ofAccount;
        showTexts();
    }
}

void OrdersPanel::setAnswering(bool isAnswering)
{
    if (isAnswering != m_isAnswering) {
        m_isAnswering = isAnswering;
        showTexts();
    }
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
    showTexts();
}

void OrdersPanel::showAccount()
{
    std::vector<PricedPosition> rows;
    bool hasReplayed = false;
    for (const Position &position : m_account ? m_account->positions : std::vector<Position>()) {
        rows.push_back({position, m_lastPrice(position.security)});
        PricedPosition &row = rows.back();
        hasReplayed |= row.last && row.last->origin == PriceOrigin::Replay;
        if (position.security.id() == m_shownSecurity.id() && position.security.name.isEmpty()) {
            row.position.security.name = m_shownSecurity.name; // the module knows names of statements only
        }
    }
    m_positions.setRecords(std::move(rows));
    m_accountCaption->setText(accountCaption(hasReplayed));
    m_halves->shareByNeed();
}

QString OrdersPanel::accountCaption(bool hasReplayed) const
{
    if (!m_accountRefusal.isEmpty()) {
        return tr("Positions · refused: %1").arg(plainText(withoutFigures(m_accountRefusal, m_hidesAmounts)));
    }
    if (!m_account) {
        return tr("Positions");
    }
    const auto money = [this](double yuan) { return shownAmount(amountText(yuan), m_hidesAmounts); };
    QString caption =
        tr("Positions · cash %1, available %2").arg(money(m_account->cash), money(m_account->available));
    if (!m_account->costMethod.isEmpty()) {
        caption = tr("%1 · cost: %2").arg(caption, plainText(costMethodText(m_account->costMethod)));
    }
    return hasReplayed ? tr("%1 · at the replayed quote").arg(caption) : caption;
}

QString OrdersPanel::ordersTitle() const
{
    if (m_ordersBar->scope() == OrderScope::Working) {
        return tr("Working orders");
    }
    return m_day ? tr("Orders of %1").arg(m_day->dashedText()) : tr("Today's orders");
}

/// Orders that the module refuses to tell are those of an earlier answer.
void OrdersPanel::showTexts()
{
    const QString title = ordersTitle();
    QString caption = title;
    if (!m_isAnswering) {
        caption = tr("%1 · no answer from the trading module").arg(title);
    } else if (!m_ordersRefusal.isEmpty()) {
        caption =
            tr("%1 · refused: %2").arg(title, plainText(withoutFigures(m_ordersRefusal, m_hidesAmounts)));
    }
    m_ordersBar->setCaption(caption);
    m_halves->setTitle(0, title);
    m_halves->setTitle(1, tr("Positions"));
    m_ordersView->setAccessibleName(title);
    m_positionsView->setAccessibleName(tr("Positions"));
    showAccount();
}

void OrdersPanel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        m_orders.retranslate();
        m_positions.retranslate();
        m_ordersBar->showTexts();
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
    m_halves->bringUp(m_ordersView);
    m_ordersView->focusRows();
}

} // namespace Terminal
