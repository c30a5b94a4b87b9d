#pragma once

#include "endpoint/EndPoint.h"
#include "terminal/trade/OpenQuestion.h"
#include "terminal/trade/TradeRecords.h"
#include "trading/Question.h"

#include <QHash>

namespace Terminal {

/// How the wish to place or to cancel an order ended.
struct DeskOutcome
{
    enum class Kind {
        Accepted, ///< `text` is the number of a placed order, or what the module says to a cancellation
        Refused,  ///< `text` is the module's reason
        NotSent,  ///< there is no bus: nothing has happened
        NoAnswer  ///< not in time: it may have happened. A late answer is told as a second outcome
    };

    Kind kind = Kind::NoAnswer;
    QString text;
    bool isLate = false; ///< an answer after NoAnswer was told
};

/// The terminal's own counter at the trading module, of which a terminal has one: it places and cancels
/// orders, and knows the orders of the shown security and the account. It has a client of the bus and an
/// answer channel for itself.
///
/// Nothing here blocks. Every wish is answered by exactly one outcome signal from the event loop, by two
/// when the module answers late. What is known is asked for from watch() on, anew when the module tells
/// of a change, after every outcome, and every few seconds; of each question at most one is open.
class OrderDesk : public QObject
{
    Q_OBJECT

public:
    explicit OrderDesk(QObject *parent = nullptr);

    /// Joins the bus instance of `address`. To be called once.
    void start(const QString &address);

    /// Starts to ask; does nothing the second time. May be called before start().
    void watch();

    /// The client that orders are sent on. What has to reach the module in order with them, such as the
    /// quotes of a replay, is sent on it, too.
    LocalCommunication::EndPoint *endPoint() { return &m_endPoint; }

    /// How long an answer is waited for; 3000 at first.
    void setTimeout(int milliseconds);

    /// Chooses whose orders are asked for: those of `day`, or of today when there is none. Those known so far
    /// are forgotten when it is another security or day.
    void show(const Security &security, std::optional<Trading::TradingDate> day);

    /// Asks for the orders and the account; does nothing before watch().
    void refresh();
    /// The same without waiting for what is open: it was asked where nobody heard it.
    void askAnew();

    /// Ends with placed().
    void place(const OrderRequest &order);
    /// Ends with cancelAnswered(). Requires an order whose day is known.
    void cancel(const OrderRecord &order);

    /// True while the module answers what it is asked.
    bool isAnswering() const { return m_isAnswering; }
    /// True when all that was asked for is answered, and when nothing is asked for, before watch().
    bool isUpToDate() const;
    /// Of the shown security and day, as last answered; empty before.
    const OrderRecords &orders() const { return m_orders; }
    /// As last answered; nothing before, and when the module does not know the question.
    const std::optional<Account> &account() const { return m_account; }

Q_SIGNALS:
    void placed(const OrderRequest &order, const DeskOutcome &outcome);
    void cancelAnswered(const OrderRecord &order, const DeskOutcome &outcome);
    void ordersChanged();
    void accountChanged();
    void answeringChanged(bool isAnswering);
    /// An answer came and was taken.
    void answered();

private:
    using Tell = std::function<void(const DeskOutcome &)>;

    struct Wish
    {
        Tell tell;
        bool isLate = false; ///< it was told that no answer came
    };

    bool isWatching() const { return m_heartbeat.isActive(); }
    /// A question as it goes out, and the id that its answer brings back.
    struct OwnQuestion
    {
        Trading::Question question;
        QString id;
    };

    OwnQuestion ask(const char *command, const Security &security);
    QString send(const OwnQuestion &own);
    QString askForOrders();
    QString askForAccount();
    void sendWish(const OwnQuestion &wish, Tell tell);
    void handleMessage(const QByteArray &topic, const QByteArray &payload);
    void takeAnswer(const QJsonObject &answer);
    void takeOrders(const QJsonObject &answer);
    void takeAccount(const QJsonObject &answer);
    void takeNotification(const QJsonObject &notification);
    void setAnswering(bool isAnswering);

    LocalCommunication::EndPoint m_endPoint;
    const QString m_channel;
    int m_questionCount = 0;
    int m_timeout = 0;
    QTimer m_heartbeat;
    OpenQuestion m_ordersQuestion;
    OpenQuestion m_accountQuestion;
    QHash<QString, Wish> m_wishes; ///< unanswered ones by their id
    Security m_security;
    std::optional<Trading::TradingDate> m_day; ///< nothing: today
    OrderRecords m_orders;
    std::optional<Account> m_account;
    bool m_isAnswering = false;
};

} // namespace Terminal
