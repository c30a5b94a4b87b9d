#include "tests/trademodule/check/support/StandInModule.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

#include <algorithm>
#include <utility>

namespace TradeModule {

namespace {

QByteArray place(const QByteArray &channel, const QByteArray &topic)
{
    return channel + '\0' + topic;
}

} // namespace

StandInModule::StandInModule(Answer answer, QByteArray presence, std::chrono::milliseconds patience)
    : m_answer(std::move(answer)),
      m_presence(std::move(presence)),
      m_patience(patience)
{
}

void StandInModule::listen(const QByteArray &channel, const QByteArray &topic)
{
    m_listened.insert(place(channel, topic));
    if (topic == Trading::Topic::TRADEPRESENCE && !m_presence.isEmpty()) {
        send({channel, topic, m_presence});
    }
}

void StandInModule::say(const QByteArray &channel, const QByteArray &topic, const QByteArray &payload)
{
    if (channel == Trading::Channel::GLOBAL && topic == TradeChart::Topic::TRADEQUERY) {
        for (const Said &said : m_answer(payload)) {
            send(said);
        }
    }
}

QByteArray StandInModule::request(const QByteArray & /*topic*/, const QByteArray &payload)
{
    QByteArray answer;
    for (const Said &said : m_answer(payload)) {
        if (!said.channel.isEmpty()) {
            send(said);
        } else if (answer.isEmpty() && said.after <= m_patience) {
            answer = said.payload;
        }
    }
    hearUntil([] { return false; }, Time(0)); // what was on its way is here when an answer is
    return answer;
}

void StandInModule::send(const Said &said)
{
    if (m_listened.contains(place(said.channel, said.topic))) {
        const Due due{m_now + said.after, {said.channel, said.topic, said.payload}};
        const auto later = std::upper_bound(m_due.begin(), m_due.end(), due.at,
                                            [](Time at, const Due &other) { return at < other.at; });
        m_due.insert(later, due);
    }
}

bool StandInModule::deliverNext(Time until)
{
    if (m_due.isEmpty() || m_due.first().at > until) {
        return false;
    }
    const Due due = m_due.takeFirst();
    m_now = std::max(m_now, due.at);
    m_hear(due.message);
    return true;
}

bool StandInModule::hearUntil(const std::function<bool()> &condition, std::chrono::milliseconds patience)
{
    const Time until = m_now + patience;
    while (!condition()) {
        if (!deliverNext(until)) {
            m_now = until;
            return condition();
        }
    }
    return true;
}

} // namespace TradeModule
