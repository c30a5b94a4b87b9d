#pragma once

#include "trademodule/exchange/NewTrading.h"
#include "trademodule/exchange/OrderCover.h"
#include "trademodule/exchange/OrderLife.h"
#include "trademodule/exchange/OrderReplacements.h"
#include "trademodule/exchange/QuoteMessage.h"
#include "trademodule/exchange/Refusals.h"
#include "trademodule/ledger/MarketDay.h"
#include "trademodule/ledger/OrderBook.h"
#include "trademodule/ledger/ToldMinutes.h"
#include "trading/TradingCalendar.h"

#include <QHash>

#include <functional>
#include <optional>

namespace TradeModule {

/// Takes the account's orders and deals them against the quotes of the market. What an order goes
/// through:
///
///     left ─► None ─┐
///     placed ───────┴─► WaittingQuote (closed hours) ─► Quoted ─► PartDeal ─► Dealed
///                   └─► Quoting (limits unknown) ───────┘ │ └───────┤
///     AbolishedOrder (beyond the price limits) ◄──────────┘         │
///     cancel: Quoted ─► QuotedWaittingCancel ─► Canceled            │
///             PartDeal ─► PartDealWaittingCancel ─► PartCanceled
///
/// The exchange's clock is the time of today's last quote; before the first quote it is the wall clock, and
/// the exchange is closed on the holidays of the user's calendar. Every order is of today, and the market's
/// rules of today hold. The quotes of a replay are left alone. Bus-free.
///
/// An account that practises has the recorded day for its today, whichever day it is played on: it takes that
/// day's quotes and no others, each once, also after a restart. Before the first one it is the opening.
class PaperExchange
{
public:
    /// Called after every change of an order, when it is in the ledger.
    using Listener = std::function<void(const Order &)>;

    /// The ledger stays the caller's and outlives this object.
    explicit PaperExchange(Ledger *ledger, Listener listener = {});

    /// Places a limit order of a buy or a sell; an Error says which rule it breaks. The order with its
    /// number and status comes back.
    ///
    /// An asker who was not answered asks again with the same client's number, and gets the order that it
    /// placed before as it is now; an Error when it was another one. Without a number every call places one.
    Order place(const SecurityId &security, Direction direction, Money price, qint64 quantity,
                const QString &clientNumber = {});
    /// The same for the exchange of another process on the same ledger: that one takes the order when it
    /// settles next.
    Order leave(const SecurityId &security, Direction direction, Money price, qint64 quantity);

    /// Asks for what is left of an order to be cancelled; an Error says why it cannot be.
    Order cancel(TradingDate date, qint64 number);

    /// Has what is left of an order go on at another price: asks for its cancellation, and when that is
    /// confirmed places the rest in the same change of the ledger. An Error says why it cannot be; then the
    /// order stays as it is. The replacement comes back as it is now, and for an asker who was not answered
    /// and asks again with the same client's number, which must not be empty; an Error when that was for
    /// another.
    Replacement replace(TradingDate date, qint64 number, Money price, const QString &clientNumber);

    /// Deals what the bar allows: a buy when its low, a sell when its high reaches the order's price, at
    /// the bar's open when that is better; all orders together at most a quarter of its volume. Of a minute
    /// that was told before, only what is new is dealt, and nothing of a late quote: see NewTrading. A quote
    /// of another day than today is left alone; the log says so once for each such day. How far a minute was
    /// told when its shares were dealt, or an order came, is in the ledger with them: after a restart nothing
    /// is dealt twice, and nothing of before an order came. When it fails as LedgerUnavailable, take the same
    /// quote again before the next: nothing was dealt, or, when that was not known, it is found out then and
    /// nothing is dealt twice.
    ///
    /// An order that fails by itself, as one whose execution the ledger refuses, is set aside: the others are
    /// dealt, and get its shares, too. The log names it with the reason. It is tried again with each quote
    /// that reaches it; the log says when that has succeeded. settle() does the same.
    void take(const Quote &quote);

    /// Reports the orders that were placed since the last call, so that they are known as reported before the
    /// next bar is dealt. Cheap when there are none.
    void report();

    /// Does what is due without a quote: reports new orders, confirms cancellations, lets the orders of
    /// past days end. Also for what other processes wrote into the ledger. Writes down the clock. Cheap
    /// when nothing is due.
    void settle();

    /// Shares that may be sold today: held, not bought today and not on offer already.
    qint64 sellable(const SecurityId &security) { return sellable(security, openOrders()); }
    /// The cash that is free for a buy and its fees: what the open buys and theirs leave.
    Money spendable() { return spendable(openOrders()); }

    /// The same with the open orders at hand, for who asks about much at once.
    Orders openOrders() { return m_book.open(); }
    qint64 sellable(const SecurityId &security, const Orders &open)
    {
        return m_cover.sellable(security, open);
    }
    qint64 sellable(const SecurityId &security, qint64 held, qint64 boughtToday, const Orders &open)
    {
        return m_cover.sellable(security, held, boughtToday, open);
    }
    Money spendable(const Orders &open) { return m_cover.spendable(open); }

    /// Gives the account this cash; an Error when the open buys need more.
    void setCash(Money cash);

private:
    void refuseWrong(const Order &order);
    Order cancellable(TradingDate date, qint64 number);
    OrderReplacements::Market market() const;
    Order enter(Order order, const QString &status);
    std::optional<Order> placedBefore(const Order &order);
    ClockTime now() const;
    bool isOpen(const SecurityId &security) const;
    bool isOfToday(const Quote &quote);
    QString whyLeftAlone(const Quote &quote) const;
    bool isPlayedAgain(const Quote &quote) const;
    void note(const Quote &quote);
    void keepTold(const Orders &orders);
    Orders completed(const Orders &changed);
    QString nameOnItsDay(const Order &order) const;
    OrderLife::Conditions conditionsOf(const Order &order) const;
    Orders newOrders() { return m_book.ofStatuses(OrderLife::newStatuses()); }
    Orders advanced(Orders orders) const;
    void advanceAll(Orders (PaperExchange::*meant)());
    Orders write(const Orders &changed);
    Orders writeAll(Transaction *transaction, const Orders &changed);
    Orders reachedBy(const Quote &quote);
    void deal(const Quote &added, const Quote &quote);
    void dealOne(Order *order, const Quote &quote, qint64 quantity);
    static std::optional<QString> faultOf(Transaction *transaction, const std::function<void()> &part);
    bool change(Transaction *transaction, const Order &order, const std::function<void()> &change);
    void setAside(const Order &order, const QString &reason);
    void takeUp(const Order &order);
    void finish(Transaction *transaction, const Orders &changed, const Quote *dealt = nullptr);
    void settleDoubt();
    void publish(const Orders &changed) const;

    /// A change of which is not known whether it was made, and what is told when it was.
    struct Doubt
    {
        qint64 mark;
        Orders changed;
        std::optional<Quote> dealt;
    };

    OrderBook m_book;
    OrderCover m_cover;
    OrderReplacements m_replacements;
    Refusals m_refusals; // of placings and replacements
    const Listener m_listener;
    MarketDay m_market;
    NewTrading m_newTrading;
    ToldMinutes m_toldMinutes;
    Trading::TradingCalendar m_calendar;
    bool m_hasPlaced = false;                  // since orders were reported last
    std::optional<ClockTime> m_practisedUntil; // where a day is practised: what was played until then is over
    QSet<TradingDate> m_strangeDates;          // of quotes, told in the log
    std::optional<Doubt> m_doubt;
    QHash<qint64, QString> m_setAside; // the numbers of orders that failed by themselves, and why
};

} // namespace TradeModule
