#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QTimer>

#include <functional>

namespace TradeModule {

/// Gives answers to the bus, so that whoever has asked is told something even when the bus has no room for
/// the answer: as soon as there is some, a short answer as it is, and of a long one that it was not sent.
/// Tries again every second for a minute, on the event loop.
class AnswerPost
{
public:
    /// Hands a message to the bus; false when it does not take it.
    using Send = std::function<bool(const QByteArray &channel, const QByteArray &answer)>;

    using TellRefusal = std::function<void(const QString &reason)>;

    /// `hasBus`: where there is none, nobody waits for an answer. `tellRefusal` gets what an asker is told in
    /// the place of an answer, for the log.
    AnswerPost(Send send, std::function<bool()> hasBus, TellRefusal tellRefusal);
    Q_DISABLE_COPY_MOVE(AnswerPost)

    /// The answer goes to the channel that the question's "screenId" names, else to its sender, who is told
    /// when no channel can have that name.
    void give(const QJsonObject &question, const QByteArray &replyChannel, const QByteArray &answer);

    /// Tries again for those that wait, the oldest first. One that is never taken, as for an asker whom the
    /// bus client has forgotten, keeps no other one back.
    void giveWaiting();

private:
    struct Letter
    {
        QByteArray channel;
        QByteArray replyChannel;
        QByteArray answer;
        int tries = 0; ///< again
    };

    bool give(const Letter &letter) const;
    void keep(const Letter &letter);

    const Send m_send;
    const std::function<bool()> m_hasBus;
    const TellRefusal m_tellRefusal;
    QList<Letter> m_waiting; // the oldest first
    QTimer m_again;          // runs while one waits
};

} // namespace TradeModule
