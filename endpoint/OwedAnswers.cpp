#include "endpoint/OwedAnswers_p.h"

#include <QUuid>

namespace LocalCommunication {

OwedAnswers::OwedAnswers()
    : m_channelStart("answer." + QUuid::createUuid().toByteArray(QUuid::WithoutBraces) + '.')
{
}

QByteArray OwedAnswers::add(const Recipient &recipient)
{
    if (m_oldestFirst.size() == mostRemembered) {
        m_recipients.remove(m_oldestFirst.front());
        m_oldestFirst.pop_front();
    }
    QByteArray channel = m_channelStart + QByteArray::number(++m_count);
    m_recipients.insert(channel, recipient);
    m_oldestFirst.push_back(channel);
    return channel;
}

std::optional<OwedAnswers::Recipient> OwedAnswers::find(const QByteArray &channel) const
{
    const auto found = m_recipients.constFind(channel);
    return found == m_recipients.constEnd() ? std::nullopt : std::optional(*found);
}

} // namespace LocalCommunication
