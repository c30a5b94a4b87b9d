#pragma once

#include "trademodule/results/Sale.h"
#include "trademodule/results/Trip.h"

namespace TradeModule {

/// Gets what a SecurityReckoning finds out, as soon as it is known. Override what is of interest.
class ResultsVisitor
{
public:
    ResultsVisitor() = default;
    virtual ~ResultsVisitor() = default;
    Q_DISABLE_COPY_MOVE(ResultsVisitor)

    virtual void visitSale(const Sale & /*sale*/) {}
    /// A round trip that is over, or the open one at the end. Later than its last sale: taxes on its
    /// dividends may come after it.
    virtual void visitTrip(const Trip & /*trip*/) {}
    /// What an event adds on its day to the figures of the security. They sum up to all there is.
    virtual void book(TradingDate /*day*/, const Figures & /*figures*/) {}
};

} // namespace TradeModule
