#pragma once

#include "trademodule/results/AccountEvent.h"
#include "trademodule/results/CostBasis.h"
#include "trademodule/results/ResultsVisitor.h"

#include <optional>

namespace TradeModule {

/// Reckons what one security cost and earned from its events, in order of time. Keeps nothing but what is
/// open, so that any number of events can go through.
class SecurityReckoning
{
public:
    /// The visitor stays the caller's and outlives this object.
    SecurityReckoning(CostMethod method, ResultsVisitor *visitor) : m_basis(method), m_visitor(visitor) {}

    void add(const AccountEvent &event);
    /// To be called once, after the last event: hands over the round trip that was not yet.
    void finish();

    /// What is held after the events so far.
    const CostBasis &basis() const { return m_basis; }
    /// Shares that left and never came in: earlier statements are missing.
    qint64 unexplained() const { return m_unexplained; }

private:
    Figures apply(const AccountEvent &event);
    void receive(const AccountEvent &event);
    Figures sell(const AccountEvent &event);
    qint64 takeOut(qint64 quantity);
    void openTrip(TradingDate day);
    void closeTripIfOver(TradingDate day);
    void handOverTrip();

    CostBasis m_basis;
    ResultsVisitor *const m_visitor;
    std::optional<Trip> m_trip; ///< the open one, or the last one that is over
    qint64 m_unexplained = 0;
};

} // namespace TradeModule
