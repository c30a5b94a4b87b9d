#pragma once

#include "terminal/trade/TicketBox.h"

#include <QDoubleSpinBox>

namespace Terminal {

/// The field of an order's price, in steps of the exchanges' smallest one. A comma is taken for the point of
/// the decimals, which it is on many keyboards; there are no separators of thousands.
class PriceBox : public TicketBox<QDoubleSpinBox>
{
public:
    PriceBox();

protected:
    QValidator::State validate(QString &text, int &cursor) const override;
};

} // namespace Terminal
