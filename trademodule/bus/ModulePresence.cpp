#include "trademodule/bus/ModulePresence.h"

#include "trading/ModuleVocabulary.h"

namespace TradeModule {

using namespace Trading;

void ModulePresence::start(const QString &busDirectory)
{
    m_announcement.start(busDirectory,
                         {Channel::GLOBAL, Topic::TRADEPRESENCE, m_own.toJson(), m_own.ended().toJson()});
}

QString ModulePresence::hear(const QByteArray &payload)
{
    const std::optional<TradePresence> heard = TradePresence::ofJson(payload);
    if (heard && isHiddenBy(m_own, *heard)) {
        m_announcement.say(m_own.toJson());
    }
    return heard && isOfAnotherLedger(m_own, *heard) ? heard->ledger : QString();
}

} // namespace TradeModule
