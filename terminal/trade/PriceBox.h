#pragma once

#include "terminal/trade/TicketBox.h"
#include "trading/SecurityRules.h"

#include <QDoubleSpinBox>

namespace Terminal {

/// The field of an order's price, in steps of the security's tick. A comma is taken for the point of
/// the decimals, which it is on many keyboards; there are no separators of thousands.
class PriceBox : public TicketBox<QDoubleSpinBox>
{
public:
    PriceBox();

    void setRules(const Trading::SecurityRules &rules);

protected:
    QValidator::State validate(QString &text, int &cursor) const override;
};

} // namespace Terminal
