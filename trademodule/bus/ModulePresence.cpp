#include "trademodule/bus/ModulePresence.h"

#include "trademodule/ledger/ProcessIdentity.h"
#include "trading/ModuleVocabulary.h"

#include <QCoreApplication>
#include <QSysInfo>

#include <utility>

namespace TradeModule {

using namespace Trading;
using namespace std::chrono_literals;
using LocalCommunication::Readiness;

namespace {

/// How long the own word is waited for where the broker may not bring it back.
constexpr auto longestArrival = 2s;

constexpr auto betweenLooks = 1s;

/// Of a module whose process is not on this machine any more, though its word is.
constexpr auto silenceOfTheDead = 3s;

/// So often one word is said against that of one other module: two that never give way must not go on for
/// ever.
constexpr int mostContests = 3;

bool isOfThisMachine(const TradePresence &presence)
{
    return presence.process > 0 && presence.host == QSysInfo::machineHostName();
}

/// A word with our own number was left behind by a process that had it before us, and so may another
/// process have the number now. Older modules do not say when theirs began.
bool isRunningHere(const TradePresence &presence)
{
    if (!isOfThisMachine(presence) || presence.process == QCoreApplication::applicationPid()) {
        return false;
    }
    return presence.processStart.isEmpty()
               ? isProcessHere(presence.process)
               : ProcessIdentity{presence.host, presence.process, presence.processStart}.isRunningHere();
}

} // namespace

ModulePresence::ModulePresence(TradePresence own, QString busDirectory, std::chrono::milliseconds patience)
    : m_own(std::move(own)),
      m_busDirectory(std::move(busDirectory)),
      m_patience(patience)
{
    m_arrival.setSingleShot(true);
    m_arrival.setInterval(longestArrival);
    m_looking.setInterval(betweenLooks);
    connect(&m_arrival, &QTimer::timeout, this, &ModulePresence::begin);
    connect(&m_looking, &QTimer::timeout, this, &ModulePresence::look);
}

/// Who waits goes on waiting: the other one, whose connection may have been lost as well, was there first.
void ModulePresence::arrive()
{
    if (m_state != State::Waiting) {
        claim();
    }
}

void ModulePresence::claim()
{
    m_state = State::Arriving;
    m_looking.stop();
    m_probe.reset();
    m_arrival.start();
    say();
}

void ModulePresence::say()
{
    if (m_isSaid) {
        m_announcement.say(m_own.toJson());
        return;
    }
    m_isSaid = true;
    m_announcement.start(m_busDirectory,
                         {Channel::GLOBAL, Topic::TRADEPRESENCE, m_own.toJson(), m_own.ended().toJson()});
}

void ModulePresence::withdraw()
{
    m_arrival.stop();
    m_isSaid = false;
    m_announcement.stop();
}

void ModulePresence::begin()
{
    m_arrival.stop();
    m_state = State::Serving;
    Q_EMIT begun();
}

void ModulePresence::hear(const QByteArray &payload)
{
    const std::optional<TradePresence> heard = TradePresence::ofJson(payload);
    if (!heard) {
        return;
    }
    // Whatever its number: the take-overs of two ledgers are counted apart.
    const bool isFarewellOfAnotherLedger = !heard->isOnline && m_contests.remove(heard->instance) > 0;
    const bool isOwn = heard->isOnline && heard->instance == m_own.instance;
    if (isOfAnotherLedger(m_own, *heard)) {
        meet(*heard);
    } else if (m_state == State::Waiting) {
        if (!heard->isOnline && heard->instance == m_other.instance) {
            claim();
        }
    } else if (m_state == State::Arriving && isOwn) {
        begin();
    } else if (m_isSaid && (isFarewellOfAnotherLedger || isHiddenBy(m_own, *heard))) {
        say();
    }
}

void ModulePresence::meet(const TradePresence &other)
{
    m_state == State::Serving ? contest(other) : waitFor(other);
}

/// Who only came and heard our word against its own leaves without another one; who says its own again
/// serves.
void ModulePresence::contest(const TradePresence &other)
{
    const int count = ++m_contests[other.instance];
    if (count > 1 && other.instance < m_own.instance) {
        waitFor(other);
    } else if (count <= mostContests) {
        say();
    }
}

void ModulePresence::waitFor(const TradePresence &other)
{
    withdraw();
    m_state = State::Waiting;
    m_other = other;
    m_silence = QDeadlineTimer(allowedSilence());
    m_isSilenceTold = false;
    if (!m_probe) {
        m_probe = std::make_unique<Readiness>();
        connect(m_probe.get(), &Readiness::answered, this, [this] {
            m_silence = QDeadlineTimer(allowedSilence());
            tellOccupied();
        });
        m_probe->start(m_busDirectory);
    }
    m_looking.start();
    look();
}

std::chrono::milliseconds ModulePresence::allowedSilence() const
{
    const bool isDead = isOfThisMachine(m_other) && !isRunningHere(m_other);
    return isDead ? std::min<std::chrono::milliseconds>(silenceOfTheDead, m_patience) : m_patience;
}

/// A process of this machine that stands still is there all the same.
void ModulePresence::look()
{
    m_probe->ask();
    if (isRunningHere(m_other)) {
        tellOccupied();
    } else if (m_silence.hasExpired()) {
        claim();
    } else if (m_other.instance != m_toldInstance && !m_isSilenceTold &&
               m_silence.remainingTime() < (allowedSilence() - silenceOfTheDead).count()) {
        m_isSilenceTold = true;
        Q_EMIT silent(m_other);
    }
}

void ModulePresence::tellOccupied()
{
    if (m_toldInstance != m_other.instance) {
        m_toldInstance = m_other.instance;
        Q_EMIT occupied(m_other);
    }
}

} // namespace TradeModule
