#include "trademodule/check/Conversation.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

namespace TradeModule {

using namespace Trading;

Conversation::Conversation(CheckedBus *bus, const CheckSettings &settings)
    : m_bus(bus),
      m_patience(settings.patience),
      m_mark(settings.mark.toUtf8())
{
    m_bus->setListener([this](const HeardMessage &message) { hear(message); });
    m_bus->listen(Channel::GLOBAL, TradeChart::Topic::TRADENOTIFY);
    m_bus->listen(Channel::GLOBAL, Topic::TRADEPRESENCE);
}

QByteArray Conversation::newScreen(const QByteArray &ending)
{
    const QByteArray screen = m_mark + '-' + QByteArray::number(++m_screens) + ending;
    m_bus->listen(screen, TradeChart::Topic::TRADEQUERY);
    return screen;
}

void Conversation::ask(const QByteArray &question)
{
    m_bus->say(Channel::GLOBAL, TradeChart::Topic::TRADEQUERY, question);
}

QByteArray Conversation::answerOn(const QByteArray &screen)
{
    waitForAnswers(screen, 1, m_patience);
    return m_answers.value(screen).value(0);
}

bool Conversation::waitForAnswers(const QByteArray &screen, int count, std::chrono::milliseconds patience)
{
    return m_bus->hearUntil([&] { return m_answers.value(screen).size() >= count; }, patience);
}

QByteArray Conversation::request(const QByteArray &question)
{
    return m_bus->request(TradeChart::Topic::TRADEQUERY, question);
}

void Conversation::pause(std::chrono::milliseconds time)
{
    m_bus->hearUntil([] { return false; }, time);
}

bool Conversation::waitUntil(const std::function<bool()> &condition)
{
    return m_bus->hearUntil(condition, m_patience);
}

void Conversation::hear(const HeardMessage &message)
{
    if (message.topic == Topic::TRADEPRESENCE) {
        m_presences.append(message.payload);
    } else if (message.topic == TradeChart::Topic::TRADENOTIFY) {
        m_notifications.append(message.payload);
    } else {
        m_answers[message.channel].append(message.payload);
    }
}

} // namespace TradeModule
