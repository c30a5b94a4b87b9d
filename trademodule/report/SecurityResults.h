#pragma once

#include "trademodule/ledger/AccountHistory.h"
#include "trademodule/results/HeldShares.h"
#include "trademodule/results/ResultsVisitor.h"

#include <map>
#include <vector>

namespace TradeModule {

/// Everything that was reckoned of one security, or of the money that belongs to none: kept close together,
/// for a ledger may have hundreds of thousands of sales.
class SecurityResults : public ResultsVisitor
{
public:
    /// The figures of a month, with one of its days.
    struct Month
    {
        TradingDate day;
        Figures figures;
    };

    explicit SecurityResults(KnownSecurity security) : m_security(std::move(security)) {}

    void visitSale(const Sale &sale) override { m_sales.push_back(sale); }
    void visitTrip(const Trip &trip) override { m_trips.push_back(trip); }
    void book(TradingDate day, const Figures &figures) override;
    /// To be called once, after the last event.
    void end(const HeldShares &shares) { m_shares = shares; }

    const KnownSecurity &security() const { return m_security; }
    const std::vector<Sale> &sales() const { return m_sales; }
    const std::vector<Trip> &trips() const { return m_trips; }
    /// By year × 100 + month.
    const std::map<int, Month> &months() const { return m_months; }
    Figures figures() const;
    const HeldShares &shares() const { return m_shares; }
    /// True when nothing happened that a list could tell.
    bool isEmpty() const { return m_months.empty() && m_shares.quantity() == 0; }

private:
    KnownSecurity m_security;
    std::vector<Sale> m_sales;
    std::vector<Trip> m_trips;
    std::map<int, Month> m_months;
    HeldShares m_shares{CostMethod::Average};
};

} // namespace TradeModule
