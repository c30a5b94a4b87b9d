#pragma once

#include "endpoint/LocalBroker.h"
#include "terminal/services/TradeModuleProcess.h"
#include "trading/Presence.h"

#include <QObject>
#include <QString>

#include <memory>

namespace Terminal {

class ModuleWatch;

/// What a terminal is to start for itself.
struct ServicePlan
{
    QString busAddress; ///< names the bus instance
    bool startsBroker = true;
    QString moduleProgram;
    QString ledger; ///< empty: no trading module is started
    QString language;
};

/// The services that a terminal starts for itself: the broker and, after it, the trading module. They end
/// with this object.
class TradeServices : public QObject
{
    Q_OBJECT

public:
    explicit TradeServices(ServicePlan plan);
    ~TradeServices() override;

    /// To be called once.
    void start();

    /// From now on the own trading module is replaced when `watch`, which must outlive this object or end
    /// with it, finds it silent.
    void replaceWhenSilent(const ModuleWatch *watch);

Q_SIGNALS:
    /// Once: the bus can be joined, or there is no other way to find out.
    void ready();

    // Texts for the user.
    /// Something that goes on as it is should be known.
    void warned(const QString &text);
    /// The terminal's own broker does not run; it is tried again unless its address is wrong.
    void busFailed(const QString &reason);
    /// See TradeModuleProcess::failed().
    void moduleFailed(const QString &reason);

    /// Once: the terminal's own trading module is on its way.
    void moduleStarted();

private:
    void handleBrokerState(LocalCommunication::LocalBroker::State state);
    void startModule();
    bool isOwn(const Trading::TradePresence &presence) const;

    const ServicePlan m_plan;
    bool m_isReady = false;
    LocalCommunication::LocalBroker m_broker;
    std::unique_ptr<TradeModuleProcess> m_module;
};

} // namespace Terminal
