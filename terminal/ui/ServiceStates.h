#pragma once

#include "terminal/ui/BusState.h"
#include "terminal/ui/ModuleState.h"

#include <QObject>
#include <QString>
#include <QTimer>

namespace Terminal {

class TradingSession;

/// How things stand with bus and trading module of a window: what its session finds on the bus, and what
/// became of the services that the terminal starts for itself.
class ServiceStates : public QObject
{
    Q_OBJECT

public:
    /// Of a window whose account is in `ledger`; empty for one without. `session` must outlive the states.
    ServiceStates(TradingSession *session, const QString &ledger);

    BusState bus() const;
    ModuleState module() const;

    /// The terminal has started a trading module of its own.
    void noteModuleStart();

    /// Why the terminal's own module could not start, or has ended; until one answers.
    void noteModuleFailure(const QString &reason);

    /// Why the terminal's own broker does not run; until a bus is joined.
    void noteBusFailure(const QString &reason);

Q_SIGNALS:
    /// Either may stand otherwise now.
    void changed();

private:
    void takeFound();

    TradingSession *m_session;
    const QString m_ledger;
    QTimer m_moduleStarts; ///< runs while the terminal's own may be expected to say its first word
    QString m_moduleFailure;
    QString m_busFailure;
};

} // namespace Terminal
