#pragma once

#include "endpoint/EndPoint.h"
#include "terminal/results/ResultsPart.h"
#include "terminal/trade/OpenQuestion.h"
#include "terminal/trade/OpenWishes.h"

#include <QTimer>

#include <deque>
#include <functional>
#include <utility>

namespace Terminal {

/// Asks the trading module for results. It has a client of the bus and an answer channel for itself.
///
/// Nothing here blocks. At most one question is open; which rows it asks for is found out when it is sent, so
/// that who leafs fast asks for what he sees last. While watch() is on it asks again when the module tells of
/// a change, and every few seconds, for a notification may be lost: the module answers off what it has
/// reckoned before.
class ResultsDesk : public QObject
{
    Q_OBJECT

public:
    /// `wanted` says which rows are to be asked for next.
    explicit ResultsDesk(std::function<RowsAsked()> wanted, QObject *parent = nullptr);

    /// Joins the bus instance of `address`. To be called once; before, nothing is asked.
    void start(const QString &address);

    /// How long an answer is waited for. The first one after an import takes the longest: all is reckoned.
    void setTimeout(std::chrono::milliseconds patience);

    void watch(bool on);
    /// Asks for what is wanted.
    void ask();
    /// The same without waiting for what is open: other rows are wanted.
    void askAnew();
    /// Asks at once, while it watches: what was asked before a trading module came is lost.
    void askAgain();

    /// Has the module reckon costs in another way; ends with costMethodAnswered().
    void setCostMethod(const QString &word);

    /// True when what was asked for last is answered; not before anything was.
    bool isUpToDate() const { return m_question.isAnswered(); }
    /// True while the module answers what it is asked.
    bool isAnswering() const { return m_isAnswering; }

Q_SIGNALS:
    void came(const ResultsPart &part);
    void refused(const QString &reason);
    void answeringChanged(bool isAnswering);
    void costMethodAnswered(const DeskOutcome &outcome);

private:
    QString send();
    bool send(const QByteArray &question);
    QString nextId();
    void handleMessage(const QByteArray &topic, const QByteArray &payload);
    void takeAnswer(const QJsonObject &answer);
    RowsAsked askedBy(const QString &id) const;
    void setAnswering(bool isAnswering);

    LocalCommunication::EndPoint m_endPoint;
    const std::function<RowsAsked()> m_wanted;
    const QString m_channel;
    int m_questionCount = 0;
    std::deque<std::pair<QString, RowsAsked>> m_asked; ///< by the id of the question, oldest first
    OpenQuestion m_question;
    OpenWishes m_wishes;
    QTimer m_heartbeat;
    bool m_isStarted = false;
    bool m_isAnswering = false;
};

} // namespace Terminal
