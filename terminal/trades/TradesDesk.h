#pragma once

#include "endpoint/EndPoint.h"
#include "terminal/aside/AsideWork.h"
#include "terminal/trade/OpenQuestion.h"
#include "terminal/trades/AccountTrade.h"
#include "trading/Question.h"

#include <QTimer>

#include <chrono>
#include <optional>
#include <utility>

namespace Terminal {

/// Asks the trading module for all trades of one security. It has a client of the bus and an answer channel
/// for itself, so that no overlay hears its answers.
///
/// Nothing here blocks, and nothing is asked before watch(). Trades of past days are asked for until they are
/// told, and again when the module tells that they changed; those of today with every change, and every few
/// seconds, for a notification may be lost.
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

    /// How trades of today are dated: as the module tells, which gives those of a practised day its own date;
    /// or, on the chart that plays that day as today, as today's.
    void setPlayedAsToday(bool on);

    /// Of the shown security, oldest first.
    const Trades &trades() const { return m_trades; }
    /// True when all that was asked for is answered, and when nothing is asked for.
    bool isUpToDate() const;
    /// Why the module does not tell those of past days, or else those of today; empty while it tells both.
    const QString &refusal() const { return m_past.refusal.isEmpty() ? m_ofToday.refusal : m_past.refusal; }

Q_SIGNALS:
    void changed(); ///< other trades, or why they are not told
    void answered();

private:
    /// What is asked for by one question, as last told.
    struct Part
    {
        explicit Part(OpenQuestion::Send send) : question(std::move(send)) {}

        OpenQuestion question;
        Trades trades;
        QString refusal; ///< why they are not told; empty while they are
    };

    QString askPast();
    QString askToday();
    bool isPastDue() const;
    QString send(Trading::Question question);
    void handleMessage(const QByteArray &topic, const QByteArray &payload);
    AsideWork::Then read(const QByteArray &payload);
    void takeAnswer(const QJsonObject &answer, Trades rows);
    void takeNotification(const QJsonObject &notification);
    void take(Part *part, const QJsonObject &answer, Trades rows);
    void putTogether();

    LocalCommunication::EndPoint m_endPoint;
    const QString m_channel;
    int m_questionCount = 0;
    QTimer m_heartbeat;
    Part m_past;
    Part m_ofToday;
    Security m_security;
    Trading::TradingDate m_today = Trading::TradingDate::first(); ///< when the past was asked for
    Trades m_trades;                                              ///< both
    bool m_isPlayedAsToday = false;                               ///< what the account practises
    bool m_isStarted = false;
    AsideWork m_aside; ///< reads answers, which may have thousands of rows
};

} // namespace Terminal
