#pragma once

#include "trading/ModuleStatus.h"
#include "trading/Quote.h"

#include <QMap>

#include <chrono>
#include <utility>

namespace TradeModule {

/// What a serving module has done since it began, counted for who watches over it.
class ServiceRecord
{
public:
    /// The word for what is no command of ours: a program gone wild must not make the record grow.
    static constexpr char otherCommands[] = "other";

    void begin(Trading::TradePresence module) { m_status.module = std::move(module); }
    void hear(const Trading::Quote &quote);
    void setWaitingQuotes(qint64 count) { m_status.waitingQuotes = count; }
    void answered(const QString &command, bool isFailure, std::chrono::microseconds taken);

    /// All but what the ledger tells.
    Trading::ModuleStatus status() const;

private:
    Trading::ModuleStatus m_status;
    QMap<QString, Trading::ModuleStatus::Answers> m_answers;
};

} // namespace TradeModule
