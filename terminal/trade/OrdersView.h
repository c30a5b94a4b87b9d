#pragma once

#include "terminal/trade/RecordView.h"
#include "terminal/trade/TradeTables.h"

namespace Terminal {

/// The rows of orders. A click on a row, or Enter, asks for its place on the chart; Delete for the
/// cancellation of the selected orders; the menu of a row for that of its order, and for another price.
class OrdersView : public RecordView
{
    Q_OBJECT

public:
    /// `orders` must outlive the view.
    explicit OrdersView(OrdersTable *orders);

    /// Selects the rows of these orders and brings the first of them into view.
    void select(const OrderRecords &orders);
    OrderRecords selected() const;
    /// Of the selected ones, or else of the one that the keyboard is at, those that can be cancelled.
    OrderRecords selectedToCancel() const;

    /// Shows of which security an order is, or else what was paid on average: there is room for one of both.
    void setNamesSecurities(bool named);

    /// Takes the keyboard, to the first row at first.
    void focusRows();

Q_SIGNALS:
    /// Other rows are selected.
    void rowsSelected();
    /// The user wants these orders to be cancelled; they can be.
    void cancelAsked(const OrderRecords &orders);
    /// The user wants another price for this order; it can be cancelled.
    void priceAsked(const OrderRecord &order);
    /// The user wants to see this order on the chart.
    void placeAsked(const OrderRecord &order);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void openMenu(const QPoint &position);
    void askToCancel(int row);

    OrdersTable *m_orders;
};

} // namespace Terminal
