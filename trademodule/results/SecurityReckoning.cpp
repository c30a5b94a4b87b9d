#include "trademodule/results/SecurityReckoning.h"

#include "trademodule/results/CheckedSum.h"

#include <algorithm>

namespace TradeModule {

namespace {

enum class Effect { SharesCome, SharesLeave, MoneyOnly };

constexpr Effect effectOf(EventKind kind)
{
    switch (kind) {
    case EventKind::Buy:
    case EventKind::Bonus:
    case EventKind::In:
        return Effect::SharesCome;
    case EventKind::Sell:
    case EventKind::Merger:
    case EventKind::Out:
        return Effect::SharesLeave;
    case EventKind::Dividend:
    case EventKind::Tax:
    case EventKind::Interest:
        return Effect::MoneyOnly;
    }
    Q_UNREACHABLE();
}

Figures ofBuy(const AccountEvent &event)
{
    Figures figures;
    figures.bought = event.amount;
    figures.fees = event.fee;
    return figures;
}

Figures ofSale(const Sale &sale)
{
    Figures figures;
    figures.sales = 1;
    figures.sold = sale.amount;
    figures.fees = sale.fee;
    figures.cost = sale.cost;
    figures.profit = sale.profit;
    return figures;
}

Figures ofMoney(Money Figures::*figure, Money amount)
{
    Figures figures;
    figures.*figure = amount;
    return figures;
}

} // namespace

void SecurityReckoning::add(const AccountEvent &event)
{
    const Effect effect = effectOf(event.kind);
    if (effect == Effect::SharesCome) {
        openTrip(event.date);
    }
    // money on what was held may come when all is sold; shares that leave then belong to no trip that is
    // known
    const bool isOfTrip = m_trip && (effect != Effect::SharesLeave || !m_trip->closed);
    const Figures figures = apply(event);
    m_visitor->book(event.date, figures);
    if (isOfTrip) {
        m_trip->figures += figures;
        closeTripIfOver(event.date);
    }
}

void SecurityReckoning::finish()
{
    handOverTrip();
}

Figures SecurityReckoning::apply(const AccountEvent &event)
{
    switch (event.kind) {
    case EventKind::Buy:
        receive(event);
        return ofBuy(event);
    case EventKind::In:
        receive(event);
        return ofMoney(&Figures::fees, event.fee);
    case EventKind::Bonus:
        m_basis.enlarge(event.quantity);
        m_trip->quantityIn += event.quantity;
        return {};
    case EventKind::Sell:
        return sell(event);
    case EventKind::Merger:
        m_basis.shrink(takeOut(event.quantity));
        return {};
    case EventKind::Out:
        m_basis.leave(takeOut(event.quantity));
        return {};
    case EventKind::Dividend:
        m_basis.earn(event.amount);
        return ofMoney(&Figures::dividends, event.amount);
    case EventKind::Tax:
        m_basis.earn(-event.amount);
        return ofMoney(&Figures::taxes, event.amount);
    case EventKind::Interest:
        return ofMoney(&Figures::interest, event.amount);
    }
    Q_UNREACHABLE();
}

void SecurityReckoning::receive(const AccountEvent &event)
{
    m_basis.add(event.quantity, checkedSum(event.amount, event.fee));
    m_trip->quantityIn += event.quantity;
}

Figures SecurityReckoning::sell(const AccountEvent &event)
{
    const qint64 explained = takeOut(event.quantity);
    const Money received = checkedSum(event.amount, -event.fee);
    const Money proceeds =
        explained == event.quantity ? received : partInCents(received, explained, event.quantity);
    const Money cost = m_basis.sell(explained, proceeds);
    const Sale sale{event.date,
                    event.time,
                    event.price,
                    event.quantity,
                    event.amount,
                    event.fee,
                    cost,
                    checkedSum(proceeds, -cost),
                    event.quantity - explained};
    m_visitor->visit(sale);
    return ofSale(sale);
}

/// How many of the shares that leave are known to have come in.
qint64 SecurityReckoning::takeOut(qint64 quantity)
{
    const qint64 explained = std::min(quantity, m_basis.quantity());
    m_unexplained += quantity - explained;
    if (explained > 0) {
        m_trip->quantityOut += explained;
    }
    return explained;
}

void SecurityReckoning::openTrip(TradingDate day)
{
    if (!m_trip || m_trip->closed) {
        handOverTrip();
        m_trip = Trip{day};
    }
}

void SecurityReckoning::closeTripIfOver(TradingDate day)
{
    if (!m_trip->closed && m_basis.quantity() == 0) {
        m_trip->closed = day;
    }
}

void SecurityReckoning::handOverTrip()
{
    if (m_trip) {
        m_visitor->visit(*m_trip);
    }
    m_trip.reset();
}

} // namespace TradeModule
