#include "trademodule/results/SecurityReckoning.h"

#include "trademodule/results/CheckedSum.h"

namespace TradeModule {

namespace {

Figures ofBuy(const AccountEvent &event)
{
    Figures figures;
    figures.bought = event.amount;
    figures.fees = event.fee;
    figures.stampDuty = event.stampDuty;
    return figures;
}

Sale saleOf(const AccountEvent &event, const HeldShares::Left &left)
{
    return {event.date,
            event.time,
            event.price,
            event.quantity,
            event.amount,
            event.fee,
            left.cost,
            checkedSum(left.proceeds, -left.cost),
            event.quantity - left.explained,
            event.stampDuty};
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
    if (bringsShares(event.kind)) {
        openTrip(event.date);
    }
    // money for what was held may come after the last sale; other shares that leave then never came in
    const bool isOfTrip = m_trip && !(m_trip->closed && takesShares(event.kind));
    const HeldShares::Left left = m_shares.apply(event);
    const Figures figures = figuresOf(event, left);
    m_visitor->book(event.date, figures);
    if (isOfTrip) {
        addToTrip(event, left, figures);
    }
}

void SecurityReckoning::finish()
{
    handOverTrip();
}

Figures SecurityReckoning::figuresOf(const AccountEvent &event, const HeldShares::Left &left)
{
    switch (event.kind) {
    case EventKind::Buy:
        return ofBuy(event);
    case EventKind::Sell: {
        const Sale sale = saleOf(event, left);
        m_visitor->visitSale(sale);
        return TradeModule::figuresOf(sale);
    }
    case EventKind::In:
        return ofMoney(&Figures::fees, event.fee);
    case EventKind::Bonus:
    case EventKind::Merger:
    case EventKind::Out:
        return {};
    case EventKind::Dividend:
        return ofMoney(&Figures::dividends, event.amount);
    case EventKind::Tax:
        return ofMoney(&Figures::taxes, event.amount);
    case EventKind::Interest:
        return ofMoney(&Figures::interest, event.amount);
    }
    Q_UNREACHABLE();
}

void SecurityReckoning::addToTrip(const AccountEvent &event, const HeldShares::Left &left,
                                  const Figures &figures)
{
    m_trip->figures += figures;
    m_trip->quantityOut += left.explained;
    if (bringsShares(event.kind)) {
        m_trip->quantityIn += event.quantity;
    }
    if (!m_trip->closed && m_shares.quantity() == 0) {
        m_trip->closed = event.date;
    }
}

void SecurityReckoning::openTrip(TradingDate day)
{
    if (!m_trip || m_trip->closed) {
        handOverTrip();
        m_trip = Trip{day};
    }
}

void SecurityReckoning::handOverTrip()
{
    if (m_trip) {
        m_visitor->visitTrip(*m_trip);
    }
    m_trip.reset();
}

} // namespace TradeModule
