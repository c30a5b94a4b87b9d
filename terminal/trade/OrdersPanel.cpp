#include "terminal/trade/OrdersPanel.h"

#include "terminal/trade/CutTextTips.h"

#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace Terminal {

namespace {

constexpr int panelHeight = 190;
constexpr int rowHeight = 24;
constexpr int narrowestColumn = 48;

/// Which columns take the room that the texts of the others leave.
constexpr int statusColumn = 6;
constexpr int nameColumn = 1;

/// The width at which no column of the table is cut.
int neededWidth(const QTableView &table)
{
    const QAbstractItemView &cells = table;
    int width = 0;
    for (int column = 0; column < table.model()->columnCount(); ++column) {
        width += std::max({table.horizontalHeader()->sectionSizeHint(column), cells.sizeHintForColumn(column),
                           narrowestColumn});
    }
    return width;
}

} // namespace

OrdersPanel::OrdersPanel(QWidget *parent)
    : QWidget(parent),
      m_ordersCaption(new QLabel),
      m_accountCaption(new QLabel),
      m_ordersView(new QTableView),
      m_positionsView(new QTableView),
      m_halves(new QSplitter)
{
    m_ordersView->setObjectName(QStringLiteral("ordersView"));
    m_positionsView->setObjectName(QStringLiteral("positionsView"));
    setUpTable(m_ordersView, &m_orders, statusColumn);
    setUpTable(m_positionsView, &m_positions, nameColumn);
    m_ordersView->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_positionsView->setSelectionMode(QAbstractItemView::NoSelection);
    m_ordersView->setContextMenuPolicy(Qt::CustomContextMenu);
    m_ordersView->installEventFilter(this);
    connect(m_ordersView, &QWidget::customContextMenuRequested, this, &OrdersPanel::openMenu);
    connect(m_ordersView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &OrdersPanel::selectionChanged);

    m_halves->setChildrenCollapsible(false);
    m_halves->addWidget(column(m_ordersCaption, m_ordersView));
    m_halves->addWidget(column(m_accountCaption, m_positionsView));
    connect(m_halves, &QSplitter::splitterMoved, this, [this] { m_isSharedByHand = true; });
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_halves);
    showTexts();
}

QWidget *OrdersPanel::column(QLabel *caption, QTableView *table)
{
    caption->setObjectName(QStringLiteral("panelCaption"));
    auto *const widget = new QWidget;
    auto *const layout = new QVBoxLayout(widget);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(caption);
    layout->addWidget(table, 1);
    return widget;
}

void OrdersPanel::setUpTable(QTableView *table, QAbstractTableModel *model, int widestColumn)
{
    table->setModel(model);
    table->setItemDelegate(new CutTextTips(table));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false); // Tab leaves the table
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->setFrameShape(QFrame::NoFrame);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(rowHeight);
    table->horizontalHeader()->setMinimumSectionSize(narrowestColumn);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->horizontalHeader()->setSectionResizeMode(widestColumn, QHeaderView::Stretch);
    table->horizontalHeader()->setHighlightSections(false);
}

void OrdersPanel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    shareWidth();
}

/// The tables stay as they are while both are wide enough: they would else move with every new figure.
void OrdersPanel::shareWidth()
{
    const int forOrders = neededWidth(*m_ordersView);
    const int forPositions = neededWidth(*m_positionsView);
    const QList<int> widths = m_halves->sizes();
    if (!m_isSharedByHand && (widths.first() < forOrders || widths.last() < forPositions)) {
        m_halves->setSizes({forOrders, forPositions});
    }
}

QByteArray OrdersPanel::sharing() const
{
    return m_isSharedByHand ? m_halves->saveState() : QByteArray();
}

void OrdersPanel::restoreSharing(const QByteArray &sharing)
{
    m_isSharedByHand = m_halves->restoreState(sharing) || m_isSharedByHand;
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
    shareWidth();
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
    QItemSelection rows;
    for (const OrderRecord &order : orders) {
        const int row = m_orders.rowOf(order.number);
        if (row >= 0) {
            rows.select(m_orders.index(row, 0), m_orders.index(row, m_orders.columnCount({}) - 1));
        }
    }
    m_ordersView->selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
    if (!rows.isEmpty()) {
        m_ordersView->selectionModel()->setCurrentIndex(rows.indexes().front(),
                                                        QItemSelectionModel::NoUpdate);
        m_ordersView->scrollTo(rows.indexes().front());
    }
}

OrderRecords OrdersPanel::selected() const
{
    OrderRecords orders;
    for (const QModelIndex &row : m_ordersView->selectionModel()->selectedRows()) {
        orders.push_back(m_orders.record(row.row()));
    }
    return orders;
}

void OrdersPanel::focusOrders()
{
    m_ordersView->setFocus(Qt::ShortcutFocusReason);
    if (!m_ordersView->currentIndex().isValid() && m_orders.rowCount({}) > 0) {
        m_ordersView->selectRow(0);
    }
}

const OrderRecord *OrdersPanel::currentOrder() const
{
    const QModelIndex current = m_ordersView->currentIndex();
    return current.isValid() ? &m_orders.record(current.row()) : nullptr;
}

void OrdersPanel::askToCancel()
{
    const OrderRecord *const order = currentOrder();
    if (order != nullptr && isCancellable(*order)) {
        Q_EMIT cancelAsked(OrderRecord(*order)); // a copy: the rows may change while the user is asked
    }
}

bool OrdersPanel::eventFilter(QObject *watched, QEvent *event)
{
    const bool isDelete =
        event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Delete;
    if (isDelete) {
        if (!static_cast<QKeyEvent *>(event)->isAutoRepeat()) {
            askToCancel();
        }
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void OrdersPanel::openMenu(const QPoint &position)
{
    const QModelIndex row = m_ordersView->indexAt(position);
    if (!row.isValid()) {
        return;
    }
    QMenu menu(this);
    QAction *const cancelling = menu.addAction(tr("Cancel this order…"));
    cancelling->setShortcut(Qt::Key_Delete);
    cancelling->setEnabled(isCancellable(m_orders.record(row.row())));
    if (menu.exec(m_ordersView->viewport()->mapToGlobal(position)) == cancelling) {
        askToCancel();
    }
}

} // namespace Terminal
