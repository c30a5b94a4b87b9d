#include "trademodule/exchange/PaperExchange.h"

#include "tradechartobject/common/OrderStatusTable.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/exchange/TradingRules.h"

#include <QtDebug>

#include <algorithm>

namespace TradeModule {

namespace {

using namespace TradeChart::OrderStatus;

/// Of a bar's volume, what this account may get.
constexpr qint64 volumeDivisor = 4;

QLatin1String code(const char *status)
{
    return QLatin1String(status);
}

/// An order that was left in the ledger and that the exchange has not seen yet can be cancelled here, though
/// charts do not offer it.
bool canBeCancelled(const Order &order)
{
    return order.status == code(None) || TradeChart::isCancellable(order.status);
}

/// What a cancellation makes of an order: one that the exchange does not know yet ends at once.
const char *statusWhenCancelled(const Order &order)
{
    if (order.status == code(Quoted)) {
        return QuotedWaittingCancel;
    }
    return order.status == code(PartDeal) ? PartDealWaittingCancel : Canceled;
}

Order newOrder(const SecurityId &security, Direction direction, Money price, qint64 quantity)
{
    Order order{security, direction, TradingDate::today(), ClockTime()};
    order.price = price;
    order.quantity = quantity;
    return order;
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

/// To touch the price is enough: the bar was traded at it.
bool reaches(const Quote &quote, const Order &order)
{
    return order.direction == Direction::Buy ? !(quote.low > order.price) : !(quote.high < order.price);
}

/// The better of the bar's open and the order's own price.
Money dealPrice(const Quote &quote, const Order &order)
{
    return order.direction == Direction::Buy ? std::min(order.price, quote.open)
                                             : std::max(order.price, quote.open);
}

/// Whole lots of what may be had, or all of an order's odd rest.
qint64 dealQuantity(const Order &order, qint64 atMost)
{
    const qint64 open = order.openQuantity();
    return open <= atMost ? open : atMost / TradingRules::lot * TradingRules::lot;
}

/// A sell may be dealt at a better price than its own, so that its amount is checked anew.
Money amountOf(const Execution &execution)
{
    const std::optional<Money> amount = execution.price.times(execution.quantity);
    if (!amount) {
        throw Error(translated("order %1 is not dealt: price × quantity would be more than %2 yuan")
                        .arg(execution.orderNo, Money::limit().text()));
    }
    return *amount;
}

} // namespace

PaperExchange::PaperExchange(Ledger *ledger, Listener listener)
    : m_book(ledger),
      m_listener(std::move(listener)),
      m_market(ledger)
{
}

ClockTime PaperExchange::now() const
{
    return m_market.clock().value_or(ClockTime::now());
}

bool PaperExchange::isOpen() const
{
    // a day that is played may be played on a Sunday
    const bool isTradingDay = m_market.clock() || TradingRules::isTradingDay(QDate::currentDate());
    return isTradingDay && TradingRules::isOpen(now());
}

const char *PaperExchange::firstStatus() const
{
    return isOpen() ? Quoting : WaittingQuote;
}

Order PaperExchange::place(const SecurityId &security, Direction direction, Money price, qint64 quantity)
{
    return enter(newOrder(security, direction, price, quantity), firstStatus());
}

Order PaperExchange::leave(const SecurityId &security, Direction direction, Money price, qint64 quantity)
{
    return enter(newOrder(security, direction, price, quantity), None);
}

Order PaperExchange::enter(Order order, const char *status)
{
    order.date = TradingDate::today();
    order.time = now();
    order.status = code(status);
    Transaction transaction = m_book.begin();
    const QString wrong = TradingRules::formError(order, m_book.holding(order.security).quantity());
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
    if (order.direction == Direction::Sell) {
        const qint64 available = sellable(order.security);
        if (order.quantity > available) {
            throw Error(translated("%1 shares may be sold: what was bought today or is on offer already does "
                                   "not count")
                            .arg(available));
        }
        return;
    }
    const Money amount = order.price.times(order.quantity).value(); // the form of the order was checked
    const Money needed = amount + TradingRules::fees(Direction::Buy, amount);
    const Money available = spendable();
    if (needed > available) {
        throw Error(translated("the order needs %1 yuan with its fees, there are %2")
                        .arg(needed.text(), available.text()));
    }
}

qint64 PaperExchange::sellable(const SecurityId &security)
{
    return sellable(security, m_book.open());
}

qint64 PaperExchange::sellable(const SecurityId &security, const Orders &open)
{
    qint64 available = m_book.holding(security).quantity() - m_book.boughtOn(TradingDate::today(), security);
    for (const Order &order : open) {
        if (order.direction == Direction::Sell && order.security == security) {
            available -= order.openQuantity();
        }
    }
    return std::max<qint64>(available, 0);
}

Money PaperExchange::spendable()
{
    return spendable(m_book.open());
}

Money PaperExchange::spendable(const Orders &open)
{
    Money available = m_book.cash();
    for (const Order &order : open) {
        if (order.direction == Direction::Buy) {
            // an older program may have let a larger one in: it claims all that there can be
            const Money amount = order.price.times(order.openQuantity()).value_or(Money::limit());
            available = available - amount - TradingRules::fees(Direction::Buy, amount);
        }
    }
    return available;
}

void PaperExchange::setCash(Money cash)
{
    Transaction transaction = m_book.begin();
    const Money onOffer = m_book.cash() - spendable();
    if (cash < onOffer) {
        throw Error(
            translated("the open buys need %1 yuan with their fees: cancel some of them, or give more")
                .arg(onOffer.text()));
    }
    m_book.setCash(cash);
    transaction.commit();
}

Order PaperExchange::cancel(TradingDate date, qint64 number)
{
    Transaction transaction = m_book.begin();
    std::optional<Order> order = m_book.find(date, number);
    if (!order) {
        throw Error(translated("there is no order %1 of %2").arg(number).arg(date.number()));
    }
    if (!canBeCancelled(*order)) {
        throw Error(translated("order %1 can not be cancelled: %2")
                        .arg(number)
                        .arg(QString::fromUtf8(getOrderStatusTxt(order->status))));
    }
    order->status = code(statusWhenCancelled(*order));
    if (order->status == code(Canceled)) {
        endCancelled(&*order);
    }
    m_book.update(*order);
    transaction.commit();
    publish({*order});
    return *order;
}

bool PaperExchange::isBeyondLimits(const Order &order) const
{
    const std::optional<Money> reference = m_market.reference(order.security);
    return reference && !TradingRules::priceLimits(order.security, *reference).contain(order.price);
}

/// Takes an order's next step that needs no quote; true when there was one.
bool PaperExchange::advance(Order *order)
{
    const bool isNew = order->status == code(Quoting) || order->status == code(WaittingQuote);
    const bool isCancelling =
        order->status == code(QuotedWaittingCancel) || order->status == code(PartDealWaittingCancel);
    if (isCancelling || order->date < TradingDate::today()) {
        endCancelled(order);
        return true;
    }
    if (order->status == code(None)) {
        order->status = code(firstStatus());
        return true;
    }
    if (!isNew || !isOpen()) {
        return false;
    }
    order->status = code(isBeyondLimits(*order) ? AbolishedOrder : Quoted);
    return true;
}

/// The orders that advanceAll() changes, as they are afterwards.
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
    advanceAll();
    m_market.keep();
}

void PaperExchange::advanceAll()
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

bool PaperExchange::isOfToday(const Quote &quote)
{
    if (quote.date == TradingDate::today()) {
        return true;
    }
    if (!m_strangeDates.contains(quote.date)) {
        m_strangeDates.insert(quote.date);
        qWarning("%s",
                 qUtf8Printable(translated("quotes of %1 are left alone: orders are dealt against quotes "
                                           "of today, %2")
                                    .arg(quote.date.number())
                                    .arg(TradingDate::today().number())));
    }
    return false;
}

void PaperExchange::take(const Quote &quote)
{
    if (!isOfToday(quote)) {
        return;
    }
    m_market.note(quote.security, quote.time, quote.open, quote.previousClose);
    advanceAll();
    if (m_market.hasNewReference()) {
        m_market.keep();
    }
    if (TradingRules::isOpen(quote.time)) {
        deal(quote); // at last: what fails can be taken again, and nothing is dealt twice
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
    qint64 left = quote.volume / volumeDivisor;
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
    Execution execution{order->security, sideOf(order->direction), TradingDate::today(), quote.time};
    execution.price = dealPrice(quote, *order);
    execution.quantity = quantity;
    execution.orderNo = QString::number(order->number);
    execution.amount = amountOf(execution);
    execution.fee = TradingRules::fees(order->direction, order->matchedAmount + execution.amount) -
                    TradingRules::fees(order->direction, order->matchedAmount);
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
