#pragma once

#include "terminal/trade/TradeRecords.h"
#include "trading/SecurityRules.h"

#include <QDialog>

#include <functional>
#include <optional>

namespace Terminal {

class PriceBox;

/// Asks for another price of an order, with the keyboard alone if need be.
class PriceDialog : public QDialog
{
    Q_OBJECT

public:
    /// `rules` are those that the order must keep to; `allowedPrice` gives the price that it may have next to
    /// one.
    PriceDialog(const OrderRecord &order, const Trading::SecurityRules &rules,
                std::function<double(double)> allowedPrice, QWidget *parent);

    /// Blocks until it is answered. Nothing when the user gives up, or leaves the price as it is.
    std::optional<double> ask();

private:
    QString question(const OrderRecord &order) const;

    const double m_price;
    std::function<double(double)> m_allowedPrice;
    PriceBox *m_box;
};

} // namespace Terminal
