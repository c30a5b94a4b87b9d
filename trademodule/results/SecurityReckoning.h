#pragma once

#include "trademodule/results/HeldShares.h"
#include "trademodule/results/ResultsVisitor.h"

#include <optional>

namespace TradeModule {

/// Reckons what one security cost and earned from its events, in order of time. Keeps nothing but what is
/// open, so that any number of events can go through.
class SecurityReckoning
{
public:
    /// The visitor stays the caller's and outlives this object.
    SecurityReckoning(CostMethod method, ResultsVisitor *visitor) : m_shares(method), m_visitor(visitor) {}

    void add(const AccountEvent &event);
    /// To be called once, after the last event: hands over the round trip that was not yet.
    void finish();

    /// What is held after the events so far.
    const HeldShares &shares() const { return m_shares; }

private:
    Figures figuresOf(const AccountEvent &event, const HeldShares::Left &left);
    void addToTrip(const AccountEvent &event, const HeldShares::Left &left, const Figures &figures);
    void openTrip(TradingDate day);
    void handOverTrip();

    HeldShares m_shares;
    ResultsVisitor *const m_visitor;
    std::optional<Trip> m_trip; ///< the open one, or the last one that is over
};

} // namespace TradeModule
