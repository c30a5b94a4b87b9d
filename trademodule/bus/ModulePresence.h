#pragma once

#include "endpoint/Announcement.h"
#include "endpoint/Readiness.h"
#include "trading/Presence.h"

#include <QDeadlineTimer>
#include <QHash>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <memory>

namespace TradeModule {

/// The place of the one trading module that serves on a bus. Modules of two ledgers there would both answer
/// each question, and an order would be placed in both accounts; so the second one leaves the place to the
/// first, whichever ledger that serves.
///
///  1. arrive() says the own word on the bus, which the broker keeps. Whoever serves there was heard before
///  the
///     word comes back; if nobody was, the place is taken: begun().
///  2. Otherwise this module says no more and waits. The place is free when the other one says farewell, as
///  the
///     broker does for one that died. A word that its owner left behind does not count for ever: who neither
///     answers a harmless question nor is dropped by the broker, as a client that stands still is, is gone.
///  3. Should two serve all the same, for example because a broker forgot them, the one with the greater
///     instance leaves.
///
/// The word is said again whenever a late word of another module has taken its place.
class ModulePresence : public QObject
{
    Q_OBJECT

public:
    /// Until then one that is silent may still be there: a broker drops a client that stands still after a
    /// minute and a half.
    static constexpr std::chrono::seconds longestSilence{100};

    /// `own` is what is said on the bus instance of `busDirectory`; who is silent there is waited for so
    /// long.
    ModulePresence(Trading::TradePresence own, QString busDirectory,
                   std::chrono::milliseconds patience = longestSilence);

    /// To be called whenever the bus has accepted the listener that hear() gets its words from.
    void arrive();

    /// A word that came on the channel and topic of presences.
    void hear(const QByteArray &payload);

    /// True from begun() until another module is found in the place.
    bool isServing() const { return m_state == State::Serving; }
    /// True while another module is in the place, or may be.
    bool isWaiting() const { return m_state == State::Waiting; }

Q_SIGNALS:
    /// The place is ours.
    void begun();

    /// The module of another ledger is in the place. Once for each that is waited for.
    void occupied(const Trading::TradePresence &other);

    /// The same, but it does not answer; it is waited for until the patience is over.
    void silent(const Trading::TradePresence &other);

private:
    enum class State {
        Away,     ///< arrive() was not called yet
        Arriving, ///< the own word is on its way
        Serving,
        Waiting, ///< for the module of another ledger
    };

    void claim();
    void begin();
    void say();
    void withdraw();
    void meet(const Trading::TradePresence &other);
    void contest(const Trading::TradePresence &other);
    void waitFor(const Trading::TradePresence &other);
    void look();
    void tellOccupied();
    std::chrono::milliseconds allowedSilence() const;

    const Trading::TradePresence m_own;
    const QString m_busDirectory;
    const std::chrono::milliseconds m_patience;
    State m_state = State::Away;
    bool m_isSaid = false; ///< the announcement has begun
    LocalCommunication::Announcement m_announcement;
    QTimer m_arrival;               ///< a broker may not bring the word back
    Trading::TradePresence m_other; ///< who is waited for
    QString m_toldInstance;         ///< of the one that occupied() told of last
    QTimer m_looking;               ///< while waiting
    QDeadlineTimer m_silence;       ///< of the one that is waited for
    bool m_isSilenceTold = false;
    std::unique_ptr<LocalCommunication::Readiness> m_probe; ///< while waiting
    QHash<QString, int> m_contests; ///< words of others, by instance, against which ours was said
};

} // namespace TradeModule
