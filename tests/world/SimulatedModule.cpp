#include "tests/world/SimulatedModule.h"

#include "trademodule/Error.h"
#include "trading/ModuleVocabulary.h"

#include <QDateTime>
#include <QUuid>

namespace World {

using namespace std::chrono_literals;

namespace {

/// As `trademodule serve` has them.
constexpr std::chrono::milliseconds patience = 500ms;
constexpr std::chrono::milliseconds betweenLooks = 500ms;

Trading::TradePresence presenceOf(const TradeModule::LedgerServer &server)
{
    Trading::TradePresence presence;
    presence.instance = QUuid::createUuid().toString(QUuid::WithoutBraces);
    presence.isOnline = true;
    presence.fence = server.fence;
    presence.version = QStringLiteral("0");
    presence.protocol = QStringLiteral("1");
    presence.can = QStringList{
        QLatin1String(Trading::Capability::CLIENTNO), QLatin1String(Trading::Capability::ACTIONS),
        QLatin1String(Trading::Capability::REPLACE), QLatin1String(Trading::Capability::OPENORDERS)};
    presence.host = QStringLiteral("desk");
    presence.since = QDateTime::currentDateTimeUtc();
    presence.ledger = QStringLiteral("account.db");
    return presence;
}

} // namespace

SimulatedModule::SimulatedModule(SimulatedTime *time, const QString &ledger)
    : m_process(time->newProcess(false)),
      m_ledger(ledger),
      m_lease(m_ledger.database())
{
    QObject::connect(&m_standby, &QTimer::timeout, &m_standby, [this] { standBy(); });
    QObject::connect(&m_heart, &QTimer::timeout, &m_heart, [this] { beat(); });
    time->as(m_process, [this] {
        m_ledger.setPatience(patience);
        m_standby.start(betweenLooks);
        standBy();
    });
}

void SimulatedModule::standBy()
{
    if (m_lease.tryFollow()) {
        m_standby.stop();
        serve();
    }
}

void SimulatedModule::serve()
{
    m_service = std::make_unique<TradeModule::TradeService>(QStringLiteral("/world"), &m_ledger,
                                                            presenceOf(m_lease.server()));
    QObject::connect(m_service.get(), &TradeModule::TradeService::leaseLost, &m_heart,
                     [this] { m_isOutrun = true; });
    m_heart.start(TradeModule::ServingLease::betweenBeats);
}

void SimulatedModule::beat()
{
    try {
        m_lease.beat();
    } catch (const TradeModule::LeaseLost &) {
        m_isOutrun = true;
    } catch (const TradeModule::LedgerError &) {
    }
}

} // namespace World
