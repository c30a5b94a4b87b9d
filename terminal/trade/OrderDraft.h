#pragma once

#include "terminal/trade/TradeRecords.h"
#include "trading/SecurityRules.h"

#include <QCoreApplication>

#include <optional>

namespace Terminal {

/// What is known when an order is drafted. What is not known is not checked.
struct DraftFacts
{
    Trading::TradingDate day = Trading::TradingDate::today(); ///< whose rules of the market hold
    bool moduleAnswers = false;
    bool isOtherAccount = false;       ///< the module serves another account than the window's
    bool isReadOnly = false;           ///< the module says that it takes no orders
    std::optional<double> closeBefore; ///< of the day before, by which the price limits go
    std::optional<double> available;   ///< cash
    std::optional<qint64> held;        ///< shares of the security
    std::optional<qint64> sellable;    ///< of them, what may be sold today
};

/// An order that is not sent yet, held against what is known. The checks spare the user a refusal; they
/// are not the rules: the trading module knows fees and whatever else holds, and it decides.
class OrderDraft
{
    Q_DECLARE_TR_FUNCTIONS(OrderDraft)

public:
    /// With `hidesAmounts` its texts do not tell what the account holds.
    OrderDraft(const OrderRequest &order, const DraftFacts &facts, bool hidesAmounts = false)
        : m_order(order),
          m_facts(facts),
          m_hidesAmounts(hidesAmounts)
    {
    }

    const OrderRequest &order() const { return m_order; }

    /// Price by quantity, in yuan, without fees.
    double amount() const { return m_order.price * static_cast<double>(m_order.quantity); }

    /// Whole and broken ones.
    double lots() const;

    /// What the market asks of an order of the day.
    Trading::SecurityRules rules() const;

    /// How far the price may go; nothing when the close before is not known, or no limit.
    std::optional<Trading::DayLimits> limits() const;

    /// The largest quantity that may be ordered at this price, some cash left over for fees; nothing when
    /// the account is not known.
    std::optional<qint64> largestQuantity() const;

    /// Why the order should not be sent, for the user; empty when nothing speaks against it.
    QString problem() const;

private:
    std::optional<qint64> largestSale() const;
    std::optional<qint64> largestBuy() const;
    QString moduleProblem() const;
    QString priceProblem() const;
    QString tickProblem() const;
    QString limitProblem() const;
    QString lotProblem() const;
    QString holdingProblem() const;
    QString cashProblem() const;
    bool isSell() const { return m_order.side == Direction::Sell; }
    bool hasAllowedQuantity(const Trading::SecurityRules &market) const;

    OrderRequest m_order;
    DraftFacts m_facts;
    bool m_hidesAmounts;
};

} // namespace Terminal
