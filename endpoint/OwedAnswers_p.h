#pragma once

#include <QByteArray>
#include <QHash>

#include <cstddef>
#include <deque>
#include <optional>

namespace LocalCommunication {

/// The questions that came in and are not answered yet. Each gets a channel name of its own, which is
/// what its answer is sent to.
///
/// The names are random: no channel that a message asks for can be taken for one of them.
class OwedAnswers
{
public:
    struct Recipient
    {
        QByteArray path;
        QByteArray correlation;
    };

    OwedAnswers();

    /// Returns the channel for the answer.
    QByteArray add(const Recipient &recipient);

    /// Nothing for a channel that is not of ours, that is answered already, or that has been pushed out by
    /// thousands of later questions.
    std::optional<Recipient> find(const QByteArray &channel) const;

    /// Each question is answered once.
    void noteAnswered(const QByteArray &channel) { m_recipients.remove(channel); }

    /// True for every channel that add() has returned.
    bool isOwn(const QByteArray &channel) const { return channel.startsWith(m_channelStart); }

private:
    static constexpr std::size_t mostRemembered = 4096;

    const QByteArray m_channelStart;
    quint64 m_count = 0;
    QHash<QByteArray, Recipient> m_recipients;
    std::deque<QByteArray> m_oldestFirst;
};

} // namespace LocalCommunication
