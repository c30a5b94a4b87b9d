#include "terminal/trade/OrdersView.h"

#include <QKeyEvent>
#include <QMenu>

#include <algorithm>
#include <functional>

namespace Terminal {

OrdersView::OrdersView(OrdersTable *orders)
    : RecordView(orders, static_cast<int>(OrderColumn::Status)),
      m_orders(orders)
{
    setObjectName(QStringLiteral("ordersView"));
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &OrdersView::openMenu);
    setNamesSecurities(false);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &OrdersView::rowsSelected);
    connect(this, &QAbstractItemView::clicked, this, [this](const QModelIndex &cell) {
        if (selectionModel()->selectedRows().size() == 1) { // else rows are being put together
            Q_EMIT placeAsked(m_orders->record(cell.row()));
        }
    });
}

void OrdersView::select(const OrderRecords &orders)
{
    QItemSelection rows;
    for (const OrderRecord &order : orders) {
        const int row = m_orders->rowOf(order.number);
        if (row >= 0) {
            rows.select(m_orders->index(row, 0), m_orders->index(row, m_orders->columnCount({}) - 1));
        }
    }
    selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
    if (!rows.isEmpty()) {
        selectionModel()->setCurrentIndex(rows.indexes().front(), QItemSelectionModel::NoUpdate);
        scrollTo(rows.indexes().front());
    }
}

OrderRecords OrdersView::selected() const
{
    OrderRecords orders;
    for (const QModelIndex &row : selectionModel()->selectedRows()) {
        orders.push_back(m_orders->record(row.row()));
    }
    return orders;
}

void OrdersView::focusRows()
{
    setFocus(Qt::ShortcutFocusReason); // makes a row the current one, but selects none
    if (!selectionModel()->hasSelection() && m_orders->rowCount({}) > 0) {
        selectRow(std::max(currentIndex().row(), 0));
    }
}

OrderRecords OrdersView::selectedToCancel() const
{
    OrderRecords orders = selected();
    if (orders.empty() && currentIndex().isValid()) {
        orders.push_back(m_orders->record(currentIndex().row()));
    }
    orders.erase(std::remove_if(orders.begin(), orders.end(), std::not_fn(&isCancellable)), orders.end());
    return orders;
}

void OrdersView::setNamesSecurities(bool named)
{
    setColumnHidden(static_cast<int>(OrderColumn::Security), !named);
    setColumnHidden(static_cast<int>(OrderColumn::Average), named);
}

void OrdersView::askToCancel(int row)
{
    if (row >= 0 && isCancellable(m_orders->record(row))) {
        Q_EMIT cancelAsked({m_orders->record(row)});
    }
}

void OrdersView::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && currentIndex().isValid()) {
        Q_EMIT placeAsked(m_orders->record(currentIndex().row()));
    } else if (event->key() != Qt::Key_Delete) {
        RecordView::keyPressEvent(event);
    } else if (const OrderRecords orders = selectedToCancel(); !event->isAutoRepeat() && !orders.empty()) {
        Q_EMIT cancelAsked(orders);
    }
}

/// The menu is for one order, wherever its row is when the user has chosen.
void OrdersView::openMenu(const QPoint &position)
{
    const QModelIndex row = indexAt(position);
    if (!row.isValid()) {
        return;
    }
    const OrderRecord order = m_orders->record(row.row());
    QMenu menu(this);
    QAction *const cancelling = menu.addAction(tr("Cancel this order…"));
    cancelling->setShortcut(Qt::Key_Delete);
    cancelling->setEnabled(isCancellable(order));
    QAction *const pricing = menu.addAction(tr("Change price…"));
    pricing->setEnabled(isCancellable(order));
    const QAction *const chosen = menu.exec(viewport()->mapToGlobal(position));
    const int shown = m_orders->rowOf(order.number);
    if (chosen == cancelling) {
        askToCancel(shown);
    } else if (chosen == pricing && shown >= 0 && isCancellable(m_orders->record(shown))) {
        Q_EMIT priceAsked(OrderRecord(m_orders->record(shown)));
    }
}

} // namespace Terminal
