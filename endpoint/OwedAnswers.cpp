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

std::optional<OwedAnswers::Recipient> OwedAnswers::take(const QByteArray &channel)
{
    const auto found = m_recipients.find(channel);
    if (found == m_recipients.end()) {
        return std::nullopt;
    }
    const Recipient recipient = *found;
    m_recipients.erase(found);
    return recipient;
}

} // namespace LocalCommunication
