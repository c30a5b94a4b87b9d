#pragma once

#include <QByteArray>
#include <QJsonObject>

/// One of the two answers that carry trades: its command, and under which keys its rows tell date and time.
struct TradesAnswer
{
    const char *name;
    const char *dateKey;
    const char *timeKey;
};

constexpr TradesAnswer pastTrades{"HistoryTrade", "bizdate", "matchtime"};
constexpr TradesAnswer todaysTrades{"TodayTrade", "orderdate", "opertime"};

/// A trade as the trading module sends it. A row has every value as a text, which a test may make nonsense
/// of.
struct SentTrade
{
    QByteArray side = "B"; ///< or S
    QByteArray date = "20240103";
    QByteArray time = "9301500"; ///< with hundredths of a second
    QByteArray price = "10.5";
    QByteArray quantity = "300";

    /// The row with no other keys than the buy/sell points read in this answer.
    QJsonObject in(const TradesAnswer &answer) const;

    /// The row with no other keys than the combined overlay reads, which wants numbers.
    QJsonObject asNumbers() const;

    /// The row with the keys of every answer and overlay, as it really travels.
    QJsonObject whole() const;
};
