#pragma once

#include "trademodule/ledger/OrderBook.h"

namespace TradeModule {

/// What the account has free for new orders: what the open ones leave of its shares and its cash.
class OrderCover
{
public:
    /// The book stays the caller's and outlives this object.
    explicit OrderCover(OrderBook *book) : m_book(book) {}

    /// Shares that may be sold today: held, not bought today and not on offer already.
    qint64 sellable(const SecurityId &security, const Orders &open);
    /// Shares that are held and not on offer, those bought today among them.
    qint64 notOnOffer(const SecurityId &security, const Orders &open);
    /// The same as sellable(), of a holding that is known, with what of it was bought today.
    qint64 sellable(const SecurityId &security, qint64 held, qint64 boughtToday, const Orders &open);
    /// The cash that is free for a buy and its fees: what the open buys and theirs leave.
    Money spendable(const Orders &open);

    /// An Error when the account does not have what an order needs beside the open ones. Requires an order of
    /// a form that TradingRules allows.
    void refuseUncovered(const Order &order, const Orders &open);

private:
    bool isOfToday(const Order &order) const;
    void refuseUncoveredSell(const Order &order, const Orders &open);
    void refuseUncoveredBuy(const Order &order, const Orders &open);

    OrderBook *const m_book;
};

} // namespace TradeModule
