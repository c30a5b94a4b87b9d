#include "terminal/trade/OrderDraft.h"

#include "terminal/trade/ShownAmount.h"
#include "trading/MarketRules.h"
#include "trading/TradingUnits.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace Terminal {

namespace {

/// Left over when a buy takes all of the cash: about what the fees of any broker come to.
constexpr double feeReserveShare = 0.002;
constexpr double leastFeeReserve = 10;

/// The price that an order for about this one is sent with.
double onTick(double price, Trading::Money tick)
{
    const double step = tick.yuan();
    return std::round(price / step) * step;
}

} // namespace

Trading::SecurityRules OrderDraft::rules() const
{
    return Trading::MarketRules::of(m_order.security.id(), m_facts.day, m_order.security.name);
}

double OrderDraft::lots() const
{
    return static_cast<double>(m_order.quantity) / static_cast<double>(rules().lot());
}

std::optional<Trading::DayLimits> OrderDraft::limits() const
{
    const auto close = m_facts.closeBefore ? Trading::Money::ofYuan(*m_facts.closeBefore) : std::nullopt;
    return close ? rules().limits(*close) : std::nullopt;
}

std::optional<qint64> OrderDraft::largestQuantity() const
{
    return isSell() ? largestSale() : largestBuy();
}

std::optional<qint64> OrderDraft::largestSale() const
{
    if (!m_facts.sellable) {
        return std::nullopt;
    }
    const Trading::SecurityRules market = rules();
    const qint64 shares = *m_facts.sellable;
    const bool isAllowed =
        shares <= market.mostQuantity && market.isSaleQuantity(shares, m_facts.held.value_or(shares));
    return isAllowed ? shares : market.wholeQuantity(std::min(shares, market.mostQuantity));
}

std::optional<qint64> OrderDraft::largestBuy() const
{
    if (!m_facts.available || !(m_order.price > 0)) {
        return std::nullopt;
    }
    const Trading::SecurityRules market = rules();
    const double reserve = std::max(leastFeeReserve, *m_facts.available * feeReserveShare);
    const double shares = std::max(0.0, *m_facts.available - reserve) / m_order.price;
    const double most = std::min(shares, static_cast<double>(market.mostQuantity));
    return market.wholeQuantity(static_cast<qint64>(most));
}

QString OrderDraft::problem() const
{
    using Check = QString (OrderDraft::*)() const;
    static constexpr Check checks[] = {
        &OrderDraft::moduleProblem, &OrderDraft::priceProblem, &OrderDraft::tickProblem,
        &OrderDraft::limitProblem,  &OrderDraft::lotProblem,   &OrderDraft::holdingProblem,
        &OrderDraft::cashProblem,
    };
    for (const Check check : checks) {
        const QString problem = (this->*check)();
        if (!problem.isEmpty()) {
            return problem;
        }
    }
    return {};
}

QString OrderDraft::moduleProblem() const
{
    if (!m_facts.moduleAnswers) {
        return tr("The trading module does not answer.");
    }
    if (m_facts.isOtherAccount) {
        return tr("The trading module on this bus serves another account.");
    }
    return m_facts.isReadOnly ? tr("The account can only be read.") : QString();
}

QString OrderDraft::priceProblem() const
{
    return m_order.price > 0 ? QString() : tr("There is no price yet.");
}

QString OrderDraft::tickProblem() const
{
    constexpr double noise = 1e-6; // of binary fractions, in yuan
    const Trading::Money tick = rules().tick;
    const bool isOnTick = std::abs(m_order.price - onTick(m_order.price, tick)) < noise;
    return isOnTick ? QString() : tr("The price must be a multiple of %1.").arg(tick.text());
}

QString OrderDraft::limitProblem() const
{
    const auto allowed = limits();
    const auto price = Trading::Money::ofYuan(m_order.price);
    if (!allowed || (price && allowed->contain(*price))) {
        return {};
    }
    return tr("The price is beyond the day's limits %1 and %2.")
        .arg(allowed->lowest.text(), allowed->highest.text());
}

QString OrderDraft::lotProblem() const
{
    const Trading::SecurityRules market = rules();
    if (m_order.quantity > market.mostQuantity) {
        return tr("The quantity must be at most %1.").arg(market.mostQuantity);
    }
    if (hasAllowedQuantity(market)) {
        return {};
    }
    return market.quantityStep == 1 ? tr("The quantity must be at least %1.").arg(market.leastQuantity)
                                    : tr("The quantity must be a multiple of %1.").arg(market.quantityStep);
}

bool OrderDraft::hasAllowedQuantity(const Trading::SecurityRules &market) const
{
    return isSell() && m_facts.held ? market.isSaleQuantity(m_order.quantity, *m_facts.held)
                                    : market.isWholeQuantity(m_order.quantity);
}

QString OrderDraft::holdingProblem() const
{
    const bool isTooMuch = isSell() && m_facts.sellable && m_order.quantity > *m_facts.sellable;
    return isTooMuch ? tr("Only %1 shares may be sold.")
                           .arg(shownAmount(QString::number(*m_facts.sellable), m_hidesAmounts))
                     : QString();
}

QString OrderDraft::cashProblem() const
{
    const bool isTooMuch = !isSell() && m_facts.available && amount() > *m_facts.available;
    return isTooMuch ? tr("There is not enough cash available.") : QString();
}

} // namespace Terminal
