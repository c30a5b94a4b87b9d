#include "trademodule/exchange/PaperExchange.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/exchange/Dealing.h"
#include "trademodule/exchange/TradingRules.h"
#include "trading/MarketRules.h"
#include "trading/SecurityKind.h"

#include <QtDebug>

#include <algorithm>
#include <utility>

namespace TradeModule {

using namespace Trading;

namespace {

constexpr auto opening = ClockTime::of(9, 15).value();

Order newOrder(const SecurityId &security, Direction direction, Money price, qint64 quantity)
{
    Order order{security, direction, TradingDate::today(), ClockTime()};
    order.price = price;
    order.quantity = quantity;
    return order;
}

Refusals::Wish wishOf(const Order &order)
{
    return {order.clientNumber, QStringLiteral("%1 %2 %3 %4 x %5")
                                    .arg(marketLetters(order.security.market), order.security.code,
                                         QLatin1String(directionLetter(order.direction)), order.price.text())
                                    .arg(order.quantity)};
}

Refusals::Wish wishOf(const Replacement &asked)
{
    return {asked.clientNumber,
            QStringLiteral("order %1 at %2").arg(asked.orderNumber).arg(asked.price.text())};
}

QString textOf(const CalendarFault &fault)
{
    switch (fault.reason) {
    case CalendarFault::Reason::Unreadable:
        return translated("the holidays in %1 are not read: %2").arg(fault.path, fault.text);
    case CalendarFault::Reason::NoDays:
        return translated("%1:%2: \"%3\" names no day; none of the holidays in this file counts")
            .arg(fault.path, QString::number(fault.line), fault.text);
    case CalendarFault::Reason::Backwards:
        return translated("%1:%2: \"%3\" ends before it begins; none of the holidays in this file counts")
            .arg(fault.path, QString::number(fault.line), fault.text);
    case CalendarFault::Reason::TooLong:
        return translated("%1:%2: \"%3\" is longer than a month; none of the holidays in this file counts")
            .arg(fault.path, QString::number(fault.line), fault.text);
    }
    return {};
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
      m_market(ledger),
      m_toldMinutes(ledger)
{
    if (m_book.practisedDay()) {
        m_practisedUntil = m_market.clock();
    }
    for (const Quote &told : m_toldMinutes.ofDay(TradingDate::today())) {
        m_newTrading.note(told);
    }
    std::optional<CalendarFault> fault;
    m_calendar = TradingCalendar::ofUser(&fault);
    if (fault) {
        qWarning("%s", qUtf8Printable(textOf(*fault)));
    }
}

ClockTime PaperExchange::now() const
{
    return m_market.clock().value_or(m_book.practisedDay() ? opening : ClockTime::now());
}

bool PaperExchange::isOpen(const SecurityId &security) const
{
    return TradingRules::isOpen(security, m_book.today(), now(), m_market.clock().has_value(), m_calendar);
}

Order PaperExchange::place(const SecurityId &security, Direction direction, Money price, qint64 quantity,
                           const QString &clientNumber)
{
    Order order = newOrder(security, direction, price, quantity);
    order.clientNumber = clientNumber;
    return enter(order, OrderLife::statusWhenPlaced(isOpen(security)));
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
    m_refusals.decideOnce(wishOf(order), [&] { refuseWrong(order); });
    order.number = m_book.add(order);
    if (!OrderLife::isLeft(order)) { // an exchange that leaves an order to another one hears no quotes
        keepTold({order});
    }
    m_hasPlaced = true;
    finish(&transaction, {order});
    return order;
}

void PaperExchange::refuseWrong(const Order &order)
{
    const Orders open = m_book.open();
    const QString wrong = TradingRules::formError(order, m_cover.notOnOffer(order.security, open));
    if (!wrong.isEmpty()) {
        throw Error(wrong);
    }
    m_cover.refuseUncovered(order, open);
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
    std::optional<Order> order;
    m_refusals.decideOnce(wishOf(asked), [&] {
        order = cancellable(date, number);
        m_replacements.begin(asked, *order, market());
    });
    OrderLife::cancel(&*order);
    m_book.update(*order);
    const Orders placed = completed({*order});
    const Replacement told = m_book.replacements().find(clientNumber).value_or(asked);
    finish(&transaction, Orders{*order} + placed);
    return told;
}

/// How far the minutes of these orders' securities were told when they came or changed.
void PaperExchange::keepTold(const Orders &orders)
{
    for (const Order &order : orders) {
        if (const std::optional<Quote> told = m_newTrading.last(order.security)) {
            m_toldMinutes.write(*told);
        }
    }
}

/// The orders that go on in place of those of these that ended and were to be replaced.
Orders PaperExchange::completed(const Orders &changed)
{
    const Orders placed = m_replacements.complete(changed, market());
    keepTold(placed);
    m_hasPlaced = m_hasPlaced || !placed.isEmpty();
    return placed;
}

OrderReplacements::Market PaperExchange::market() const
{
    return {m_book.today(), now(), [this](const SecurityId &security) { return isOpen(security); },
            [this](const Order &order) {
                return conditionsOf(order).limits == OrderLife::Conditions::Limits::Broken;
            }};
}

/// A name keeps the letter of its first days until a statement tells another one: the letter holds on a day
/// of which a statement tells.
QString PaperExchange::nameOnItsDay(const Order &order) const
{
    const QString &name = order.securityName;
    const bool isOutdated =
        listingStageOf(name) != ListingStage::Later && !m_book.isStated(order.security, order.date);
    return isOutdated ? name.mid(1) : name;
}

OrderLife::Conditions PaperExchange::conditionsOf(const Order &order) const
{
    using Limits = OrderLife::Conditions::Limits;
    const SecurityRules rules = MarketRules::of(order.security, order.date, nameOnItsDay(order));
    const std::optional<Money> reference = m_market.reference(order.security);
    OrderLife::Conditions conditions{isOpen(order.security), Limits::Unknown, m_book.today()};
    if (!rules.limit) {
        conditions.limits = Limits::Kept;
    } else if (reference) {
        conditions.limits = rules.limits(*reference)->contain(order.price) ? Limits::Kept : Limits::Broken;
    }
    return conditions;
}

/// Those of these orders that advanceAll() changes, as they are afterwards.
Orders PaperExchange::advanced(Orders orders) const
{
    Orders changed;
    for (Order &order : orders) {
        if (OrderLife::advance(&order, conditionsOf(order))) {
            changed.append(order);
        }
    }
    return changed;
}

/// What is placed while this reports, and what a failure leaves, is for the next call.
void PaperExchange::report()
{
    if (!std::exchange(m_hasPlaced, false)) {
        return;
    }
    try {
        settleDoubt();
        advanceAll(&PaperExchange::newOrders);
    } catch (const Error &) {
        m_hasPlaced = true;
        throw;
    }
}

void PaperExchange::settle()
{
    settleDoubt();
    advanceAll(&PaperExchange::openOrders);
    m_market.keep();
}

void PaperExchange::advanceAll(Orders (PaperExchange::*meant)())
{
    if (advanced((this->*meant)()).isEmpty()) {
        return; // nearly always, and without locking anybody out
    }
    Transaction transaction = m_book.begin();
    const Orders written = writeAll(&transaction, advanced((this->*meant)()));
    if (!written.isEmpty()) { // what is set aside comes here each second, and a commit waits for the disk
        finish(&transaction, written);
    }
}

/// Changed orders and what goes on in their place. All are written first: what one of them had reserved is
/// free for what another one is replaced by.
Orders PaperExchange::write(const Orders &changed)
{
    for (const Order &order : changed) {
        m_book.update(order);
    }
    keepTold(changed);
    return changed + completed(changed);
}

/// The same, but one by one when one of them fails by itself.
Orders PaperExchange::writeAll(Transaction *transaction, const Orders &changed)
{
    Orders written;
    if (!faultOf(transaction, [&] { written = write(changed); })) {
        std::for_each(changed.begin(), changed.end(), [this](const Order &order) { takeUp(order); });
        return written;
    }
    for (const Order &order : changed) {
        change(transaction, order, [&] { written += write({order}); });
    }
    return written;
}

bool PaperExchange::isOfToday(const Quote &quote)
{
    const std::optional<TradingDate> practised = m_book.practisedDay();
    if (practised ? quote.recorded == practised : quote.date == TradingDate::today() && !quote.recorded) {
        return true;
    }
    const TradingDate strange = quote.recorded.value_or(quote.date);
    if (!m_strangeDates.contains(strange)) {
        m_strangeDates.insert(strange);
        qWarning("%s", qUtf8Printable(whyLeftAlone(quote)));
    }
    return false;
}

QString PaperExchange::whyLeftAlone(const Quote &quote) const
{
    if (quote.recorded) {
        return translated("quotes of a replay of %1 are left alone: this account does not practise that day")
            .arg(quote.recorded->number());
    }
    return translated("quotes of %1 are left alone: orders are dealt against quotes of today, %2")
        .arg(quote.date.number())
        .arg(m_book.today().number());
}

void PaperExchange::take(const Quote &quote)
{
    if (!isOfToday(quote) || isPlayedAgain(quote)) {
        return;
    }
    settleDoubt();
    const std::optional<Quote> added = m_newTrading.of(quote);
    if (!added) {
        return;
    }
    m_market.note(quote.security, m_newTrading.timeWith(quote), quote.open, quote.previousClose);
    advanceAll(&PaperExchange::openOrders);
    if (takesOrders(MarketRules::stateOnTradingDay(quote.security, quote.recorded.value_or(quote.date),
                                                   quote.time))) {
        deal(*added, quote); // at last: what fails can be taken again, and nothing is dealt twice
    }
    note(quote); // from here on a failure deals nothing again
    if (m_market.hasNewReference()) {
        m_market.keep(); // a practised minute counts as played after a restart, too
    }
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

/// The orders that a bar deals, the oldest first. One of a past day that cannot be ended is none of them.
Orders PaperExchange::reachedBy(const Quote &quote)
{
    Orders reached;
    const TradingDate today = m_book.today();
    const Orders open = m_book.open(quote.security);
    std::copy_if(open.begin(), open.end(), std::back_inserter(reached), [&](const Order &order) {
        return !(order.date < today) && OrderLife::isDealable(order) && Dealing::reaches(quote, order);
    });
    return reached;
}

void PaperExchange::deal(const Quote &added, const Quote &quote)
{
    if (reachedBy(added).isEmpty()) {
        return;
    }
    Transaction transaction = m_book.begin();
    Orders dealt;
    qint64 left = Dealing::mostShares(added);
    Orders reached = reachedBy(added);
    for (Order &order : reached) {
        const qint64 quantity = Dealing::quantity(order, left);
        if (quantity > 0 && change(&transaction, order, [&] { dealOne(&order, added, quantity); })) {
            left -= quantity;
            dealt.append(order);
        }
    }
    m_toldMinutes.write(quote);
    finish(&transaction, dealt, &quote);
}

void PaperExchange::dealOne(Order *order, const Quote &quote, qint64 quantity)
{
    const Execution execution = Dealing::execution(*order, quote, quantity);
    m_book.execute(execution);
    OrderLife::deal(order, execution);
    m_book.update(*order);
}

/// Why a part of a change failed by itself, and then nothing of it is changed; nothing when it is made.
std::optional<QString> PaperExchange::faultOf(Transaction *transaction, const std::function<void()> &part)
{
    try {
        transaction->attempt(part);
    } catch (const LedgerUnavailable &) {
        throw;
    } catch (const LeaseLost &) {
        throw;
    } catch (const Error &error) {
        return error.reason();
    }
    return std::nullopt;
}

/// Changes one of several orders; false when that failed by itself.
bool PaperExchange::change(Transaction *transaction, const Order &order, const std::function<void()> &change)
{
    if (const std::optional<QString> fault = faultOf(transaction, change)) {
        setAside(order, *fault);
        return false;
    }
    takeUp(order);
    return true;
}

/// Told once, and again when it fails for another reason.
void PaperExchange::setAside(const Order &order, const QString &reason)
{
    if (m_setAside.value(order.number) != reason) {
        m_setAside[order.number] = reason;
        qWarning("%s", qUtf8Printable(translated("order %1 (%2) is set aside, the others are not: %3. It is "
                                                 "tried again with each quote that reaches it; cancel it "
                                                 "when it is not wanted any more")
                                          .arg(QString::number(order.number), order.security.code, reason)));
    }
}

void PaperExchange::takeUp(const Order &order)
{
    if (m_setAside.remove(order.number) > 0) {
        qWarning("%s", qUtf8Printable(translated("order %1 (%2) is not set aside any more")
                                          .arg(QString::number(order.number), order.security.code)));
    }
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
        if (doubt.dealt) {
            note(*doubt.dealt); // when it is taken again, there is nothing new in it
        }
        publish(doubt.changed);
    }
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
