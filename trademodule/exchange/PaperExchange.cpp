#include "trademodule/exchange/PaperExchange.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/exchange/Dealing.h"
#include "trademodule/exchange/OrderLife.h"
#include "trademodule/exchange/TradingRules.h"
#include "trading/DayLimits.h"

#include <QtDebug>

#include <algorithm>
#include <utility>

namespace TradeModule {

namespace {

constexpr auto opening = ClockTime::of(9, 15).value();

Order newOrder(const SecurityId &security, Direction direction, Money price, qint64 quantity)
{
    Order order{security, direction, TradingDate::today(), ClockTime()};
    order.price = price;
    order.quantity = quantity;
    return order;
}

bool isSameContent(const Order &a, const Order &b)
{
    return a.security == b.security && a.direction == b.direction && a.price == b.price &&
           a.quantity == b.quantity;
}

} // namespace

PaperExchange::PaperExchange(Ledger *ledger, Listener listener)
    : m_book(ledger),
      m_cover(&m_book),
      m_replacements(&m_book, &m_cover),
      m_listener(std::move(listener)),
      m_market(ledger)
{
    if (m_book.practisedDay()) {
        m_practisedUntil = m_market.clock();
    }
}

ClockTime PaperExchange::now() const
{
    return m_market.clock().value_or(m_book.practisedDay() ? opening : ClockTime::now());
}

bool PaperExchange::isOpen() const
{
    // a day that is played may be played on a Sunday
    const bool isTradingDay = m_market.clock() || TradingRules::isTradingDay(m_book.today());
    return isTradingDay && TradingRules::isOpen(now());
}

Order PaperExchange::place(const SecurityId &security, Direction direction, Money price, qint64 quantity,
                           const QString &clientNumber)
{
    Order order = newOrder(security, direction, price, quantity);
    order.clientNumber = clientNumber;
    return enter(order, OrderLife::statusWhenPlaced(isOpen()));
}

Order PaperExchange::leave(const SecurityId &security, Direction direction, Money price, qint64 quantity)
{
    return enter(newOrder(security, direction, price, quantity),
                 QLatin1String(TradeChart::OrderStatus::None));
}

Order PaperExchange::enter(Order order, const QString &status)
{
    settleDoubt();
    order.date = m_book.today();
    order.time = now();
    order.status = status;
    Transaction transaction = m_book.begin();
    if (const std::optional<Order> before = placedBefore(order)) {
        return *before;
    }
    const QString wrong = TradingRules::formError(order, m_book.holding(order.security).quantity());
    if (!wrong.isEmpty()) {
        throw Error(wrong);
    }
    m_cover.refuseUncovered(order);
    order.number = m_book.add(order);
    finish(&transaction, {order});
    return order;
}

std::optional<Order> PaperExchange::placedBefore(const Order &order)
{
    const std::optional<Order> before =
        order.clientNumber.isEmpty() ? std::nullopt : m_book.find(order.clientNumber);
    if (before && !isSameContent(*before, order)) {
        throw Error(translated("the client's number \"%1\" is that of another order, %2")
                        .arg(order.clientNumber)
                        .arg(before->number));
    }
    return before;
}

void PaperExchange::setCash(Money cash)
{
    Transaction transaction = m_book.begin();
    const Money onOffer = m_book.cash() - m_cover.spendable(m_book.open());
    if (cash < onOffer) {
        throw Error(
            translated("the open buys need %1 yuan with their fees: cancel some of them, or give more")
                .arg(onOffer.text()));
    }
    m_book.enterCash(cash);
    transaction.commit();
}

/// An order of which something can be cancelled; an Error says why there is none.
Order PaperExchange::cancellable(TradingDate date, qint64 number)
{
    const std::optional<Order> order = m_book.find(date, number);
    if (!order) {
        throw Error(translated("there is no order %1 of %2").arg(number).arg(date.number()));
    }
    if (!OrderLife::canBeCancelled(*order)) {
        throw Error(translated("order %1 can not be cancelled: %2")
                        .arg(number)
                        .arg(QString::fromUtf8(TradeChart::OrderStatus::getOrderStatusTxt(order->status))));
    }
    return *order;
}

Order PaperExchange::cancel(TradingDate date, qint64 number)
{
    settleDoubt();
    Transaction transaction = m_book.begin();
    Order order = cancellable(date, number);
    OrderLife::cancel(&order);
    m_book.update(order);
    finish(&transaction, {order});
    return order;
}

/// An order that the exchange does not know yet is replaced at once.
Replacement PaperExchange::replace(TradingDate date, qint64 number, Money price, const QString &clientNumber)
{
    settleDoubt();
    Transaction transaction = m_book.begin();
    const Replacement asked{clientNumber, number, price};
    if (const std::optional<Replacement> before = m_replacements.askedBefore(asked)) {
        return *before;
    }
    Order order = cancellable(date, number);
    m_replacements.begin(asked, order, market());
    OrderLife::cancel(&order);
    m_book.update(order);
    finish(&transaction, Orders{order} + m_replacements.complete({order}, market()));
    return m_book.replacements().find(clientNumber).value_or(asked);
}

OrderReplacements::Market PaperExchange::market() const
{
    return {TradingDate::today(), now(), isOpen(),
            [this](const Order &order) { return isBeyondLimits(order); }};
}

bool PaperExchange::isBeyondLimits(const Order &order) const
{
    const std::optional<Money> reference = m_market.reference(order.security);
    return reference && !Trading::dayLimits(order.security.code, *reference).contain(order.price);
}

/// The orders that advanceAll() changes, as they are afterwards.
Orders PaperExchange::advanced()
{
    Orders changed;
    Orders open = m_book.open();
    for (Order &order : open) {
        if (OrderLife::advance(&order, {isOpen(), isBeyondLimits(order), m_book.today()})) {
            changed.append(order);
        }
    }
    return changed;
}

void PaperExchange::settle()
{
    settleDoubt();
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
    finish(&transaction, changed + m_replacements.complete(changed, market()));
}

bool PaperExchange::isOfToday(const Quote &quote)
{
    const std::optional<TradingDate> practised = m_book.practisedDay();
    if (practised ? quote.recorded == practised : quote.date == TradingDate::today()) {
        return true;
    }
    if (!m_strangeDates.contains(quote.date)) {
        m_strangeDates.insert(quote.date);
        qWarning("%s",
                 qUtf8Printable(translated("quotes of %1 are left alone: orders are dealt against quotes "
                                           "of today, %2")
                                    .arg(quote.date.number())
                                    .arg(m_book.today().number())));
    }
    return false;
}

void PaperExchange::take(const Quote &quote)
{
    if (!isOfToday(quote) || isPlayedAgain(quote)) {
        return;
    }
    settleDoubt();
    if (wasDealt(quote)) {
        note(quote);
        return;
    }
    const std::optional<Quote> added = m_newTrading.of(quote);
    if (!added) {
        return;
    }
    m_market.note(quote.security, m_newTrading.timeWith(quote), quote.open, quote.previousClose);
    advanceAll();
    if (m_market.hasNewReference()) {
        m_market.keep();
    }
    if (TradingRules::isOpen(quote.time)) {
        deal(*added); // at last: what fails can be taken again, and nothing is dealt twice
    }
    note(quote);
}

/// Nobody trades a practised minute twice: its session is begun again as a whole or not at all.
bool PaperExchange::isPlayedAgain(const Quote &quote) const
{
    return m_practisedUntil && quote.time <= *m_practisedUntil;
}

void PaperExchange::note(const Quote &quote)
{
    m_newTrading.note(quote);
    if (m_book.practisedDay()) {
        m_practisedUntil = quote.time;
    }
}

/// The orders that a bar deals, the oldest first.
Orders PaperExchange::reachedBy(const Quote &quote)
{
    Orders reached;
    const Orders open = m_book.open();
    std::copy_if(open.begin(), open.end(), std::back_inserter(reached), [&quote](const Order &order) {
        return order.security == quote.security && OrderLife::isDealable(order) &&
               Dealing::reaches(quote, order);
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
    qint64 left = Dealing::mostShares(quote);
    Orders reached = reachedBy(quote);
    for (Order &order : reached) {
        const qint64 quantity = dealOne(&order, quote, left);
        left -= quantity;
        if (quantity > 0) {
            dealt.append(order);
        }
    }
    finish(&transaction, dealt, &quote);
}

qint64 PaperExchange::dealOne(Order *order, const Quote &quote, qint64 atMost)
{
    const qint64 quantity = Dealing::quantity(*order, atMost);
    if (quantity == 0) {
        return 0;
    }
    const Execution execution = Dealing::execution(*order, quote, quantity);
    m_book.execute(execution);
    OrderLife::deal(order, execution);
    m_book.update(*order);
    return quantity;
}

/// Commits a change and tells of it, at once or when it is known that it was made.
void PaperExchange::finish(Transaction *transaction, const Orders &changed, const Quote *dealt)
{
    try {
        transaction->commit();
    } catch (const OutcomeUnknown &unknown) {
        m_doubt = Doubt{unknown.mark(), changed, dealt == nullptr ? std::nullopt : std::optional(*dealt)};
        throw;
    }
    publish(changed);
}

/// Finds out what became of the last change; nothing else is changed before.
void PaperExchange::settleDoubt()
{
    if (!m_doubt) {
        return;
    }
    const bool wasMade = m_book.isCommitted(m_doubt->mark);
    const Doubt doubt = *std::exchange(m_doubt, std::nullopt);
    if (wasMade) {
        m_dealtInDoubt = doubt.dealt;
        publish(doubt.changed);
    }
}

/// True for the quote that is taken again after its dealing was in doubt and turned out to be done.
bool PaperExchange::wasDealt(const Quote &quote)
{
    const std::optional<Quote> dealt = std::exchange(m_dealtInDoubt, std::nullopt);
    return dealt && dealt->security == quote.security && dealt->time == quote.time;
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
