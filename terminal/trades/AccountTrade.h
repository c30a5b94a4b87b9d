// The account's trades of one security, as the trading module tells of them.
#pragma once

#include "terminal/trade/TradeRecords.h"

#include <QJsonObject>

#include <vector>

namespace Terminal {

/// What the exchange carried out at one time and price.
struct AccountTrade
{
    Trading::TradingDate day;
    Trading::ClockTime time;
    Direction side = Direction::Buy;
    double price = 0;    ///< yuan, as it was paid
    qint64 quantity = 0; ///< shares
    double amount = 0;   ///< yuan
    QString orderNumber{};

    bool isBuy() const { return side == Direction::Buy; }
};

/// Oldest first.
using Trades = std::vector<AccountTrade>;

/// The rows of an answer to a question for trades, of today or of past days; a row without a day, or
/// with a quantity that nobody holds, is left out. Any thread may read them.
Trades readTrades(const QJsonObject &answer);

/// What trades come to together.
struct TradeSum
{
    struct Part
    {
        qint64 quantity = 0;
        double amount = 0;

        /// Per share; requires shares.
        double averagePrice() const { return amount / static_cast<double>(quantity); }
    };

    int count = 0;
    Part bought{};
    Part sold{};

    void add(const AccountTrade &trade);
};

} // namespace Terminal
