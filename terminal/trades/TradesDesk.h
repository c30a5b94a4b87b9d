#pragma once

#include "endpoint/EndPoint.h"
#include "terminal/trade/OpenQuestion.h"
#include "terminal/trades/AccountTrade.h"
#include "trading/Question.h"

#include <QTimer>

#include <chrono>
#include <optional>

namespace Terminal {

/// Asks the trading module for all trades of one security. It has a client of the bus and an answer channel
/// for itself, so that no overlay hears its answers.
///
/// Nothing here blocks, and nothing is asked before watch(). Trades of past days are asked for once, and
/// again when the module tells that they changed; those of today with every change, and every few seconds,
/// for a notification may be lost.
class TradesDesk : public QObject
{
    Q_OBJECT

public:
    explicit TradesDesk(QObject *parent = nullptr);

    /// Joins the bus instance of `address`. To be called once.
    void start(const QString &address);
    /// How long an answer is waited for.
    void setTimeout(std::chrono::milliseconds patience);

    /// While it is on, trades are asked for.
    void watch(bool on);
    /// Asks at once, while it watches: what was asked before a trading module came is lost.
    void askAnew();
    bool isWatching() const { return m_heartbeat.isActive(); }

    /// Chooses whose trades are asked for; those known so far are forgotten when it is another security.
    void show(const Security &security);

    /// The account practises this day. The module tells its trades as today's and as past ones; they count as
    /// today's while the day is played as today, and as those of the day otherwise.
    void setPractised(Trading::TradingDate day, bool isPlayed);

    /// Of the shown security, oldest first.
    const Trades &trades() const { return m_trades; }
    /// True when all that was asked for is answered, and when nothing is asked for.
    bool isUpToDate() const;
    /// Why the module does not tell them; empty while it does.
    const QString &refusal() const { return m_refusal; }

Q_SIGNALS:
    void changed(); ///< other trades, or why they are not told
    void answered();

private:
    QString askPast();
    QString askToday();
    QString send(Trading::Question question);
    void handleMessage(const QByteArray &topic, const QByteArray &payload);
    void takeAnswer(const QJsonObject &answer);
    void takeNotification(const QJsonObject &notification);
    void take(Trades *part, const QJsonObject &answer);
    void putTogether();

    LocalCommunication::EndPoint m_endPoint;
    const QString m_channel;
    int m_questionCount = 0;
    QTimer m_heartbeat;
    OpenQuestion m_pastQuestion;
    OpenQuestion m_todayQuestion;
    Security m_security;
    Trading::TradingDate m_today = Trading::TradingDate::first(); ///< when the past was asked for
    Trades m_past;
    Trades m_ofToday;
    Trades m_trades; ///< both
    QString m_refusal;
    std::optional<Trading::TradingDate> m_practised;
    bool m_isPlayed = false; ///< the practised day
    bool m_isStarted = false;
};

} // namespace Terminal
