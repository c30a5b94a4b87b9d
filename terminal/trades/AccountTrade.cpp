#include "terminal/trades/AccountTrade.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/TradingUnits.h"

#include <QJsonArray>

#include <algorithm>
#include <tuple>

namespace Terminal {

namespace {

using namespace TradeChart::TradeKeyFields;

QString textOf(const QJsonObject &row, const char *key)
{
    return row.value(QLatin1String(key)).toString();
}

/// A row of today may have its order's day and time alone.
QString textOf(const QJsonObject &row, const char *key, const char *otherKey)
{
    const QString text = textOf(row, key);
    return text.isEmpty() ? textOf(row, otherKey) : text;
}

std::optional<AccountTrade> readTrade(const QJsonObject &row)
{
    const auto day = Trading::TradingDate::ofText(textOf(row, RTSDATE, RTSORDERDATE));
    const double quantity = textOf(row, RTSMATCHQTY).toDouble();
    if (!day || !(quantity >= 1 && quantity <= static_cast<double>(Trading::mostHeldShares))) {
        return std::nullopt;
    }
    AccountTrade trade{
        *day,
        Trading::ClockTime::ofText(textOf(row, RTSMATCHTIME, RTSENTRUSTTIME)).value_or(Trading::ClockTime())};
    trade.side =
        textOf(row, RTSBSFLAG) == QLatin1String(TradeChart::BSFlag::BUY) ? Direction::Buy : Direction::Sell;
    trade.price = textOf(row, RTSMATCHPRICE).toDouble();
    trade.quantity = static_cast<qint64>(quantity);
    const double amount = textOf(row, RTSMATCHAMT).toDouble();
    trade.amount = amount > 0 ? amount : trade.price * static_cast<double>(trade.quantity);
    trade.orderNumber = textOf(row, RTSORDERNO);
    return trade;
}

} // namespace

Trades readTrades(const QJsonObject &answer)
{
    Trades trades;
    const QJsonArray rows = answer.value(QLatin1String(DATA)).toArray();
    for (const QJsonValue &row : rows) {
        if (const auto trade = readTrade(row.toObject())) {
            trades.push_back(*trade);
        }
    }
    std::stable_sort(trades.begin(), trades.end(), [](const AccountTrade &one, const AccountTrade &other) {
        return std::tie(one.day, one.time) < std::tie(other.day, other.time);
    });
    return trades;
}

void TradeSum::add(const AccountTrade &trade)
{
    Part &part = trade.isBuy() ? bought : sold;
    ++count;
    part.quantity += trade.quantity;
    part.amount += trade.amount;
}

} // namespace Terminal
