#pragma once

#include "terminal/trade/TradeRecords.h"

#include <QInputDialog>

#include <functional>

namespace Terminal {

/// Asks for another price of an order, with the keyboard alone if need be.
class PriceDialog : public QInputDialog
{
    Q_OBJECT

public:
    /// `allowedPrice` gives the price that the order may have next to one.
    PriceDialog(const OrderRecord &order, std::function<double(double)> allowedPrice, QWidget *parent);

    /// Blocks until it is answered. Nothing when the user gives up, or leaves the price as it is.
    std::optional<double> ask();

private:
    const double m_price;
    std::function<double(double)> m_allowedPrice;
};

} // namespace Terminal
