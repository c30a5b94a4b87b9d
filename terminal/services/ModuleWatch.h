#pragma once

#include "endpoint/Readiness.h"
#include "terminal/services/Gate.h"
#include "trading/Presence.h"

#include <QObject>
#include <QString>
#include <QTime>
#include <QTimer>

#include <chrono>
#include <optional>

namespace Terminal {

/// How things stand with the bus and with the trading module on it. It hears what a module announces of
/// itself and asks one a harmless question every two seconds; so one that hangs is late within four seconds
/// and found within ten, also one that announces nothing.
class ModuleWatch : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Absent,    ///< none is there: it has not come, has gone, or there is no bus
        Answering, ///< it is there and takes orders
        ReadOnly,  ///< it is there, answers, and takes no orders
        Refusing,  ///< it is there and refuses the question; reason() tells why
        Silent,    ///< it has not said that it went, but does not answer any more
    };

    enum class Bus {
        Joining, ///< nobody has accepted this watch yet
        Joined,
        Lost, ///< it was joined, is gone, and is being joined again
    };

    static constexpr std::chrono::milliseconds defaultPulse = std::chrono::seconds(2);

    /// Asks every `pulse` and gives a module up after three to four of them.
    explicit ModuleWatch(QObject *parent, std::chrono::milliseconds pulse = defaultPulse);

    /// Begins to watch on the bus instance of `address`.
    void start(const QString &address);

    State state() const { return m_state; }

    /// True for the states in which a question is answered.
    bool isAnswering() const;

    /// The module's own words in state Refusing; empty in the others.
    QString reason() const { return m_reason; }

    /// What the module that is there last said of itself; nothing while none is, and for one that announces
    /// nothing.
    std::optional<Trading::TradePresence> presence() const;

    Bus bus() const { return m_bus; }

    /// When the oldest question was asked that one who is there has not answered for a whole pulse; nothing
    /// while all are answered in time.
    std::optional<QTime> unansweredSince() const;

    /// A gate that opens when a trading module has answered a question that is asked then. What the bus
    /// brought before that answer has been handled. The watch must outlive the gate.
    Gate answerGate();

Q_SIGNALS:
    /// Anything of the above may be another one now.
    void changed();

    /// One is there now that was not, or not answering, before.
    void answering();

    /// The bus or the module was away, for however short a time, and is back: what was asked meanwhile is
    /// lost. A module that is there is asked at once, and answered() follows.
    void cameBack();

    /// An answer came.
    void answered();

private:
    void takeWord(const QByteArray &word);
    void takeAnswer(const QByteArray &answer);
    void comeBack();
    void takeJoin();
    void checkPulse();
    void loseBus();
    void ask();
    bool isOnBus() const { return m_readiness.isJoined(); }
    void forgetUnanswered();
    bool isAnnounced() const { return m_presence && m_presence->isOnline; }
    void enterPresent();
    void enter(State state, const QString &reason = {});

    LocalCommunication::Readiness m_readiness;
    QTimer m_pulse;
    QTimer m_impatience; // asks more often while gates are closed
    Bus m_bus = Bus::Joining;
    State m_state = State::Absent;
    QString m_reason;
    std::optional<Trading::TradePresence> m_presence; // the word that holds, also an offline one
    bool m_isAsked = true; // since the last offline word: an answer from before it is not a sign of life
    int m_unanswered =
        0; // questions in a row, asked in turns of the event loop: who stood still blames nobody
    QTime m_unansweredFrom; // when the first of them was asked
    bool m_isLate = false;  // and a pulse has passed since
};

} // namespace Terminal
