#pragma once

#include "endpoint/Announcement.h"
#include "trading/Presence.h"

namespace TradeModule {

/// Says on the bus that a module serves, from start() until this object goes, and says it again whenever a
/// late word of another module has taken its place.
class ModulePresence
{
public:
    /// `own` is what is said.
    explicit ModulePresence(Trading::TradePresence own) : m_own(std::move(own)) {}

    void start(const QString &busDirectory);
    /// A word that came on the channel and topic of presences, our own included. Gives the ledger of a module
    /// that serves another one on this bus; mostly empty.
    QString hear(const QByteArray &payload);

private:
    const Trading::TradePresence m_own;
    LocalCommunication::Announcement m_announcement;
};

} // namespace TradeModule
