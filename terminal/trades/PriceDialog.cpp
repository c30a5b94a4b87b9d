#include "terminal/trades/PriceDialog.h"

#include "terminal/chart/text/FigureText.h"
#include "terminal/trade/PlainText.h"
#include "terminal/trade/TradeTables.h"
#include "trading/TradingUnits.h"

#include <QDoubleSpinBox>

#include <utility>

namespace Terminal {

PriceDialog::PriceDialog(const OrderRecord &order, std::function<double(double)> allowedPrice,
                         QWidget *parent)
    : QInputDialog(parent),
      m_price(order.price),
      m_allowedPrice(std::move(allowedPrice))
{
    setWindowTitle(tr("Change the price of an order"));
    setInputMode(QInputDialog::DoubleInput);
    setLocale(QLocale::c()); // a point, as everywhere in the window
    setDoubleDecimals(2);
    setDoubleStep(Trading::priceStep.yuan());
    setDoubleRange(m_allowedPrice(0), m_allowedPrice(Trading::highestPrice.yuan()));
    setDoubleValue(order.price);
    const qint64 rest = order.quantity - order.dealt;
    const QString what = orderSummary({order.security, order.side, order.price, rest}, false);
    setLabelText(
        tr("New price of order %1, %2, from %3 to %4:")
            .arg(plainText(order.number), what, priceText(doubleMinimum()), priceText(doubleMaximum())));
    setOkButtonText(tr("Replace…"));
    setCancelButtonText(tr("Leave it"));
}

std::optional<double> PriceDialog::ask()
{
    if (exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    const double price = m_allowedPrice(doubleValue());
    return price == m_price ? std::nullopt : std::optional(price);
}

} // namespace Terminal
