#include "terminal/trades/PriceDialog.h"

#include "terminal/trade/PlainText.h"
#include "terminal/trade/PriceBox.h"
#include "terminal/trade/TradeTables.h"
#include "trading/TradingUnits.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace Terminal {

PriceDialog::PriceDialog(const OrderRecord &order, const Trading::SecurityRules &rules,
                         std::function<double(double)> allowedPrice, QWidget *parent)
    : QDialog(parent),
      m_price(order.price),
      m_allowedPrice(std::move(allowedPrice)),
      m_box(new PriceBox)
{
    setWindowTitle(tr("Change the price of an order"));
    m_box->setRules(rules);
    m_box->setRange(m_allowedPrice(0), m_allowedPrice(Trading::highestPrice.yuan()));
    m_box->setValue(order.price);
    m_box->selectAll();
    auto *const label = new QLabel(question(order));
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(m_box);
    m_box->setAccessibleName(label->text());
    auto *const buttons = new QDialogButtonBox;
    buttons->addButton(tr("Replace…"), QDialogButtonBox::AcceptRole)->setDefault(true);
    buttons->addButton(tr("Leave it"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *const column = new QVBoxLayout(this);
    column->addWidget(label);
    column->addWidget(m_box);
    column->addWidget(buttons);
    m_box->setFocus();
}

QString PriceDialog::question(const OrderRecord &order) const
{
    const qint64 rest = order.quantity - order.dealt;
    const QString what = orderSummary({order.security, order.side, order.price, rest}, false);
    return tr("New price of order %1, %2, from %3 to %4:")
        .arg(plainText(order.number), what, tickText(order.security, m_box->minimum()),
             tickText(order.security, m_box->maximum()));
}

std::optional<double> PriceDialog::ask()
{
    if (exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    const double price = m_allowedPrice(m_box->value());
    return price == m_price ? std::nullopt : std::optional(price);
}

} // namespace Terminal
