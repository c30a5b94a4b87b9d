#include "trademodule/exchange/PaperExchange.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/Error.h"
#include "trademodule/ExchangeTime.h"
#include "trademodule/exchange/TradingRules.h"

#include <algorithm>

namespace TradeModule {

namespace {

using namespace TradeChart::OrderStatus;

/// Of a bar's volume, what this account may get.
constexpr qint64 VolumeDivisor = 4;

QLatin1String code(const char *status)
{
    return QLatin1String(status);
}

/// What a cancellation asked for makes of an order: one the exchange does not know yet ends at once.
constexpr const char *const *cancelTargets[][2] = {
    {&Quoted, &QuotedWaittingCancel},
    {&PartDeal, &PartDealWaittingCancel},
    {&WaittingQuote, &Canceled},
    {&Quoting, &Canceled},
};

const char *cancelTarget(const QString &status)
{
    for (const auto &row : cancelTargets) {
        if (status == code(*row[0])) {
            return *row[1];
        }
    }
    return nullptr;
}

bool isDealable(const Order &order)
{
    return order.status == code(Quoted) || order.status == code(PartDeal);
}

void endCancelled(Order *order)
{
    order->cancelledQuantity = order->quantity - order->matchedQuantity;
    order->status = code(order->matchedQuantity > 0 ? PartCanceled : Canceled);
}

bool reaches(const Quote &quote, const Order &order)
{
    return order.side == Side::Buy ? !(quote.low > order.price) : !(quote.high < order.price);
}

/// The better of the bar's open and the order's own price.
Money dealPrice(const Quote &quote, const Order &order)
{
    return order.side == Side::Buy ? std::min(order.price, quote.open) : std::max(order.price, quote.open);
}

/// Whole lots of what may be had, or all of an order's odd rest.
qint64 dealQuantity(const Order &order, qint64 atMost)
{
    const qint64 open = order.openQuantity();
    return open <= atMost ? open : atMost / TradingRules::Lot * TradingRules::Lot;
}

} // namespace

PaperExchange::PaperExchange(Ledger *ledger, Listener listener)
    : m_book(ledger),
      m_listener(std::move(listener))
{
}

int PaperExchange::now() const
{
    return m_quoteTime >= 0 ? m_quoteTime : timeNumber(QTime::currentTime());
}

Order PaperExchange::place(const Security &security, Side side, Money price, qint64 quantity)
{
    Order order;
    order.security = security;
    order.side = side;
    order.price = price;
    order.quantity = quantity;
    order.date = today();
    order.time = now();
    order.status = code(TradingRules::isOpen(order.time) ? Quoting : WaittingQuote);
    Transaction transaction = m_book.begin();
    const QString wrong = TradingRules::formError(order, m_book.holding(security).quantity());
    if (!wrong.isEmpty()) {
        throw Error(wrong);
    }
    refuseUncovered(order);
    order.number = m_book.add(order);
    transaction.commit();
    publish({order});
    return order;
}

void PaperExchange::refuseUncovered(const Order &order)
{
    if (order.side == Side::Sell) {
        const qint64 available = sellable(order.security);
        if (order.quantity > available) {
            throw Error(
                QStringLiteral("%1 shares may be sold: what was bought today or is on offer already does "
                               "not count")
                    .arg(available));
        }
        return;
    }
    const Money amount = order.price * order.quantity;
    const Money needed = amount + TradingRules::fees(Side::Buy, amount);
    const Money available = spendable();
    if (needed > available) {
        throw Error(QStringLiteral("the order needs %1 yuan with its fees, there are %2")
                        .arg(needed.text(), available.text()));
    }
}

qint64 PaperExchange::sellable(const Security &security)
{
    qint64 available = m_book.holding(security).quantity() - m_book.boughtOn(today(), security);
    const Orders open = m_book.open();
    for (const Order &order : open) {
        if (order.side == Side::Sell && order.security == security) {
            available -= order.openQuantity();
        }
    }
    return std::max<qint64>(available, 0);
}

Money PaperExchange::spendable()
{
    Money available = m_book.cash();
    const Orders open = m_book.open();
    for (const Order &order : open) {
        if (order.side == Side::Buy) {
            const Money amount = order.price * order.openQuantity();
            available = available - amount - TradingRules::fees(Side::Buy, amount);
        }
    }
    return available;
}

Order PaperExchange::cancel(int date, qint64 number)
{
    Transaction transaction = m_book.begin();
    std::optional<Order> order = m_book.find(date, number);
    if (!order) {
        throw Error(QStringLiteral("there is no order %1 of %2").arg(number).arg(date));
    }
    const char *target = cancelTarget(order->status);
    if (target == nullptr) {
        throw Error(QStringLiteral("order %1 can not be cancelled: %2")
                        .arg(number)
                        .arg(QString::fromUtf8(getOrderStatusTxt(order->status))));
    }
    order->status = code(target);
    if (target == Canceled) {
        endCancelled(&*order);
    }
    m_book.update(*order);
    transaction.commit();
    publish({*order});
    return *order;
}

/// Takes an order's next step that needs no quote; true when there was one.
bool PaperExchange::advance(Order *order)
{
    const bool isNew = order->status == code(Quoting) || order->status == code(WaittingQuote);
    const bool isCancelling =
        order->status == code(QuotedWaittingCancel) || order->status == code(PartDealWaittingCancel);
    if (isCancelling || order->date < today()) {
        endCancelled(order);
        return true;
    }
    if (!isNew || !TradingRules::isOpen(now())) {
        return false;
    }
    const auto reference = m_references.constFind(order->security);
    const bool isBeyondLimits = reference != m_references.constEnd() &&
                                !TradingRules::priceLimits(order->security, *reference).contain(order->price);
    order->status = code(isBeyondLimits ? AbolishedOrder : Quoted);
    return true;
}

/// The orders that settle() changes, as they are afterwards.
Orders PaperExchange::advanced()
{
    Orders changed;
    Orders open = m_book.open();
    for (Order &order : open) {
        if (advance(&order)) {
            changed.append(order);
        }
    }
    return changed;
}

void PaperExchange::settle()
{
    if (advanced().isEmpty()) {
        return; // nearly always, and without locking anybody out
    }
    Transaction transaction = m_book.begin();
    const Orders changed = advanced();
    for (const Order &order : changed) {
        m_book.update(order);
    }
    transaction.commit();
    publish(changed);
}

void PaperExchange::take(const Quote &quote)
{
    m_quoteTime = quote.time;
    if (!quote.previousClose.isZero()) {
        m_references[quote.security] = quote.previousClose;
    } else if (!m_references.contains(quote.security)) {
        m_references[quote.security] = quote.open;
    }
    settle();
    if (TradingRules::isOpen(quote.time)) {
        deal(quote);
    }
}

/// The orders that a bar deals, the oldest first.
Orders PaperExchange::reachedBy(const Quote &quote)
{
    Orders reached;
    const Orders open = m_book.open();
    std::copy_if(open.begin(), open.end(), std::back_inserter(reached), [&quote](const Order &order) {
        return order.security == quote.security && isDealable(order) && reaches(quote, order);
    });
    return reached;
}

void PaperExchange::deal(const Quote &quote)
{
    if (reachedBy(quote).isEmpty()) {
        return;
    }
    Transaction transaction = m_book.begin();
    Orders dealt;
    qint64 left = quote.volume / VolumeDivisor;
    Orders reached = reachedBy(quote);
    for (Order &order : reached) {
        const qint64 quantity = dealOne(&order, quote, left);
        left -= quantity;
        if (quantity > 0) {
            dealt.append(order);
        }
    }
    transaction.commit();
    publish(dealt);
}

qint64 PaperExchange::dealOne(Order *order, const Quote &quote, qint64 atMost)
{
    const qint64 quantity = dealQuantity(*order, atMost);
    if (quantity == 0) {
        return 0;
    }
    Execution execution;
    execution.security = order->security;
    execution.side = order->side;
    execution.date = today();
    execution.time = quote.time;
    execution.price = dealPrice(quote, *order);
    execution.quantity = quantity;
    execution.amount = execution.price * quantity;
    execution.fee = TradingRules::fees(order->side, order->matchedAmount + execution.amount) -
                    TradingRules::fees(order->side, order->matchedAmount);
    execution.orderNo = QString::number(order->number);
    execution.dealNo = QStringLiteral("P%1-%2").arg(order->number).arg(order->matchedQuantity + quantity);
    m_book.execute(execution);

    order->matchedQuantity += quantity;
    order->matchedAmount = order->matchedAmount + execution.amount;
    order->status = code(order->openQuantity() == 0 ? Dealed : PartDeal);
    m_book.update(*order);
    return quantity;
}

void PaperExchange::publish(const Orders &changed) const
{
    if (m_listener) {
        for (const Order &order : changed) {
            m_listener(order);
        }
    }
}

} // namespace TradeModule
