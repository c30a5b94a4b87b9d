// The account's orders and holdings as the trading module tells of them.
#pragma once

#include "terminal/data/SecurityList.h"
#include "trading/ClockTime.h"
#include "trading/Direction.h"
#include "trading/TradingDate.h"

#include <QJsonObject>

#include <optional>
#include <vector>

namespace Terminal {

using Trading::Direction;

/// Who wants an order to be placed, and is told how that ended.
enum class OrderOrigin {
    Hand, ///< the user, now
    Plan  ///< a list that was made before
};

/// A limit order that the user wants to have placed.
struct OrderRequest
{
    Security security;
    Direction side = Direction::Buy;
    double price = 0;    ///< yuan
    qint64 quantity = 0; ///< shares
    OrderOrigin origin = OrderOrigin::Hand;
    QString clientNumber =
        {}; ///< the terminal's own name of this order, which no other one has; empty until placed
};

/// An order that the trading module knows.
struct OrderRecord
{
    Security security;
    Direction side = Direction::Buy;
    QString status; ///< a code of TradeChart::OrderStatus, as received
    QString number;
    std::optional<Trading::TradingDate> day; ///< nothing when the module tells no such day
    std::optional<Trading::ClockTime> time;  ///< the same
    double price = 0;
    qint64 quantity = 0;
    qint64 dealt = 0;
    double dealtAmount = 0;

    /// Of what was dealt; nothing while nothing was.
    std::optional<double> averagePrice() const;

    friend bool operator==(const OrderRecord &one, const OrderRecord &other);
};

/// What is left of an order, at another price.
struct PriceChange
{
    OrderRecord order;
    double price = 0;          ///< yuan
    QString clientNumber = {}; ///< the terminal's own name of this change, which no other one has
};

/// Oldest first, as the trading module lists them.
using OrderRecords = std::vector<OrderRecord>;

/// What is held of one security.
struct Position
{
    Security security;
    qint64 quantity = 0;
    qint64 sellable = 0; ///< bought before today and not on offer
    double cost = 0;     ///< per share

    friend bool operator==(const Position &one, const Position &other);
};

/// The account: its cash and what it holds.
struct Account
{
    double cash = 0;
    double available = 0; ///< of the cash, what no waiting order has claimed
    std::vector<Position> positions;
    QString costMethod{}; ///< how costs are reckoned, the module's word; empty when it does not say

    /// What is held of a security; null when nothing is.
    const Position *find(const Security &security) const;

    friend bool operator==(const Account &one, const Account &other);
};

/// The user's word for a side, translated.
QString sideText(Direction side);

/// How costs are reckoned, translated; a word that is not known is itself.
QString costMethodText(const QString &word);

/// The user's words for the order's status, translated: in Chinese they are the vocabulary's. A code that the
/// vocabulary does not know is itself.
QString statusText(const OrderRecord &order);

/// True while the order can still be cancelled; for that its day must be known. The trading module has the
/// last word.
bool isCancellable(const OrderRecord &order);

/// The rows of an answer to a question for orders; a row without a known side or a number is left out. Any
/// thread may read them.
OrderRecords readOrders(const QJsonObject &answer);

/// The account of an answer to AccountInfo.
Account readAccount(const QJsonObject &answer);

} // namespace Terminal
