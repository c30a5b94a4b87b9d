#pragma once

#include "endpoint/EndPoint.h"
#include "terminal/aside/AsideWork.h"
#include "terminal/trade/OpenQuestion.h"
#include "terminal/trade/OpenWishes.h"
#include "terminal/trade/TradeRecords.h"
#include "trading/Question.h"

#include <QHash>
#include <QTimer>

#include <chrono>
#include <functional>
#include <optional>
#include <utility>

namespace Terminal {

/// What an order desk goes by of the trading module that is there.
struct DeskModule
{
    bool knowsClientNumbers = false; ///< it knows orders by the terminal's own numbers
    QString account;                 ///< whose orders it takes; another one with another account
    QString objection;               ///< why nothing may be sent to it, for the user; mostly empty
    bool replacesOrders = false;     ///< it places what is left of an order at another price
    bool tellsOpenOrders = false;    ///< of all securities at once
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

    /// How long an answer is waited for; three seconds at first.
    void setTimeout(std::chrono::milliseconds patience);

    /// Chooses whose orders are asked for: those of `day`, or of today when there is none. Those known so far
    /// are forgotten when it is another security or day.
    void show(const Security &security, std::optional<Trading::TradingDate> day);

    /// Asks for the orders and the account; does nothing before watch().
    void refresh();
    /// The same without waiting for what is open: it was asked where nobody heard it.
    void askAnew();
    /// To be called when a module may be there that was not: it is asked for what has become of the orders
    /// that are not answered yet.
    void askForOutcomes() { m_wishes.askAgain(); }

    /// The language in which the module is to tell its reasons, "zh" or "en"; empty: it is not told.
    void setLanguage(const QString &word) { m_language = word; }

    /// Tells of the module that is there whenever something is sent.
    void setModule(std::function<DeskModule()> module) { m_module = std::move(module); }

    /// Ends with placed(). Returns the client's number of this order, with which it goes out and which
    /// `placed` has, too: its own where it has one, for a second call with it is about the same order, else a
    /// new one. Where the module knows such numbers and does not answer in time, it is asked some times more,
    /// and so is one that follows it with the same account: the number keeps that one order.
    QString place(const OrderRequest &order);
    /// Ends with replaced(), when the module says how it ended: it is asked again while it does not answer,
    /// as for a placing, and as long as it waits for the cancellation of the old order. Requires
    /// canReplace(), and an order whose day is known. Returns the client's number, which `replaced` has, too.
    QString replace(const PriceChange &change);
    /// True when the module that is there replaces orders.
    bool canReplace() const { return m_module().replacesOrders; }
    /// Ends with cancelAnswered(). Requires an order whose day is known.
    void cancel(const OrderRecord &order);

    /// Asks how far an order of today is dealt, whichever security is shown; ends with lookedUp().
    void lookUp(const OrderRecord &order);

    /// True while the module answers what it is asked.
    bool isAnswering() const { return m_isAnswering; }
    /// True when all that was asked for is answered, and when nothing is asked for, before watch().
    bool isUpToDate() const;
    /// Of the shown security and day, as last answered; empty before.
    const OrderRecords &orders() const { return m_orders; }
    /// The orders of all securities that may still be dealt, as last answered; nothing before, and when the
    /// module cannot tell them.
    const std::optional<OrderRecords> &workingOrders() const { return m_working; }
    /// As last answered; nothing before, and when the module does not know the question.
    const std::optional<Account> &account() const { return m_account; }
    /// Why the module refuses to tell the orders, or the account; empty while it does not refuse.
    const QString &ordersRefusal() const { return m_ordersRefusal; }
    const QString &accountRefusal() const { return m_accountRefusal; }

Q_SIGNALS:
    void placed(const OrderRequest &order, const DeskOutcome &outcome);
    /// No answer came in time; the module was asked again for the same order.
    void askedAgain(const OrderRequest &order);
    void replaced(const PriceChange &change, const DeskOutcome &outcome);
    void replaceAskedAgain(const PriceChange &change);
    void cancelAnswered(const OrderRecord &order, const DeskOutcome &outcome);
    /// The order as the module tells it now; as it was asked for, with nothing dealt, when the module does
    /// not tell it in time.
    void lookedUp(const OrderRecord &order);
    void ordersChanged(); ///< or why they are not told; an answer that tells nothing new changes nothing
    void workingOrdersChanged();
    void accountChanged(); ///< the same
    /// The module tells that an order has this status now, a code of the vocabulary.
    void statusTold(const QString &orderNumber, const QString &status);
    void answeringChanged(bool isAnswering);
    /// An answer came and was taken.
    void answered();

private:
    /// A question as it goes out, and the id that its answer brings back.
    struct OwnQuestion
    {
        Trading::Question question;
        QString id;
    };

    bool isWatching() const { return m_heartbeat.isActive(); }
    OwnQuestion ask(const char *command, const Security &security);
    bool send(const QByteArray &question);
    Wish numbered(const OwnQuestion &own) const;
    void sendWish(const Wish &wish);
    QString sendOwn(const OwnQuestion &own);
    QString askForOrders();
    QString askForWorkingOrders();
    void askForAll(void (OpenQuestion::*asking)());
    QString askForAccount();
    void speak(Trading::Question *question) const;
    void handleMessage(const QByteArray &topic, const QByteArray &payload);
    AsideWork::Then read(const QByteArray &payload);
    void takeAnswer(const QJsonObject &answer, OrderRecords rows);
    void takeOrders(const QJsonObject &answer, OrderRecords rows);
    void takeWorkingOrders(const QJsonObject &answer, OrderRecords rows);
    void takeAccount(const QJsonObject &answer);
    void endLookUp(const QString &id, const OrderRecords &rows);
    void takeNotification(const QJsonObject &notification);
    void setAnswering(bool isAnswering);

    LocalCommunication::EndPoint m_endPoint;
    const QString m_channel;
    int m_questionCount = 0;
    QTimer m_heartbeat;
    OpenQuestion m_ordersQuestion;
    OpenQuestion m_workingQuestion;
    OpenQuestion m_accountQuestion;
    OpenWishes m_wishes;
    QHash<QString, OrderRecord> m_lookUps; ///< by the question's id
    std::chrono::milliseconds m_patience{};
    std::function<DeskModule()> m_module = [] { return DeskModule(); };
    Security m_security;
    std::optional<Trading::TradingDate> m_day; ///< nothing: today
    QString m_language;
    OrderRecords m_orders;
    std::optional<OrderRecords> m_working;
    std::optional<Account> m_account;
    QString m_ordersRefusal;
    QString m_accountRefusal;
    bool m_isAnswering = false;
    AsideWork m_aside; ///< reads answers, which may have thousands of rows
};

} // namespace Terminal
