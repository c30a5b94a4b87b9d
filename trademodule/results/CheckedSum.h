#pragma once

#include "trademodule/SharedTypes.h"

namespace TradeModule {

/// The sum of two amounts, or of two numbers of shares; an Error where it cannot be held. One amount of a
/// ledger is limited, a million of them together are not.
Money checkedSum(Money a, Money b);
qint64 checkedSum(qint64 a, qint64 b);

/// `number` × `part` / `whole`, a half away from zero: exact also where the product has more than 64 bits.
/// What is beyond the range of the result becomes its end. `whole` is more than 0.
qint64 proportion(qint64 number, qint64 part, qint64 whole);
/// The same rounded down; none is negative.
qint64 proportionRoundedDown(qint64 number, qint64 part, qint64 whole);

/// `part` / `whole` of an amount in whole cents, a half away from zero.
Money partInCents(Money amount, qint64 part, qint64 whole);

} // namespace TradeModule
