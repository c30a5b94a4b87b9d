#pragma once

#include "terminal/trade/TicketBox.h"
#include "trading/SecurityRules.h"

#include <QSpinBox>

namespace Terminal {

/// The field of an order's quantity in shares, in steps of a lot.
class QuantityBox : public TicketBox<QSpinBox>
{
public:
    QuantityBox();

    void setRules(const Trading::SecurityRules &rules);

    qint64 shares() const { return value(); }
    /// Takes what the field can hold of it.
    void setShares(qint64 shares);
};

} // namespace Terminal
