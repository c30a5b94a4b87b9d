#include "terminal/session/TradingSession.h"

#include "terminal/services/BusInstance.h"
#include "terminal/services/BusProbe.h"
#include "trading/ModuleVocabulary.h"
#include "trading/TradingDate.h"

#include <utility>

namespace Terminal {

namespace {

/// How late a paused day notices midnight at most.
constexpr std::chrono::milliseconds midnightTurn = std::chrono::seconds(20);

} // namespace

TradingSession::TradingSession(const DataFolder &folder, DayPlan plan, const QString &busAddress)
    : m_plan(std::move(plan)),
      m_busAddress(busAddress),
      m_source(folder, &m_today),
      m_prices(&m_source, &m_today),
      m_statementActions(&m_source),
      m_feed(&m_replay, &m_desk, m_plan.orders, nullptr),
      m_replayLock(busInstance()),
      m_reached(m_plan.practised ? m_plan.practised->reached : std::nullopt)
{
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, [this] { enter(Stage::Alone); });
    connect(&m_module, &ModuleWatch::answering, this, &TradingSession::enterWhenHeard);
    connect(&m_module, &ModuleWatch::answered, this, [this] { // its word alone may come before it hears
        if (std::exchange(m_isLeft, false)) {
            Q_EMIT overlaysDue(); // what a chart asked meanwhile is lost
        }
    });
    connect(&m_feed, &QuoteFeed::joined, this, [this] {
        enterWhenHeard();
        if (m_stage == Stage::Trading) {
            m_feed.tellMissedOrders(); // of while the bus was away
        }
    });
    connect(&m_feed, &QuoteFeed::refused, this, &TradingSession::orderRefused);
    connect(&m_feed, &QuoteFeed::taken, this, [this] {
        if (m_stage == Stage::Informing) {
            enter(Stage::Trading);
        }
    });
    connect(&m_shared, &SharedChannel::heard, this, &TradingSession::heard);
    connect(&m_replay, &Replay::stateChanged, this, [this] {
        if (m_replay.state() == Replay::State::Closed) {
            m_replayLock.release();
        }
    });
    connect(&m_replay, &Replay::advanced, this, &TradingSession::noteProgress);
    connect(&m_replay, &Replay::advanced, this, &TradingSession::passMidnight);
    connect(&m_midnight, &QTimer::timeout, this, &TradingSession::passMidnight);
    if (m_plan.practised) {
        m_midnight.start(midnightTurn); // its user may think for long
    }
    connect(&m_desk, &OrderDesk::placed, this, [this](const OrderRequest &, const DeskOutcome &outcome) {
        const bool isOut =
            outcome.kind != DeskOutcome::Kind::Refused && outcome.kind != DeskOutcome::Kind::NotSent;
        m_hasOrders = m_hasOrders || (isOut && m_replay.state() != Replay::State::Closed);
    });
    m_desk.setModule([this] { return moduleForOrders(); });
    connect(&m_module, &ModuleWatch::changed, &m_desk, [this] {
        if (m_module.isAnswering()) {
            m_desk.askForOutcomes();
            m_desk.refresh(); // this one may tell what the one before could not
            enterWhenHeard();
        } else {
            noteLeft();
        }
    });
    connect(&m_module, &ModuleWatch::cameBack, this, &TradingSession::noteLeft);
    m_statementActions.setIsKnown([this] { return moduleKnows(Trading::Capability::ACTIONS); });
    connect(&m_module, &ModuleWatch::changed, &m_statementActions, &StatementActions::noteModule);
    if (m_plan.replaySpeed > 0) {
        m_replay.setSpeed(m_plan.replaySpeed);
    }
}

/// An order goes into the window's own account or nowhere.
DeskModule TradingSession::moduleForDesk() const
{
    const auto presence = m_module.presence();
    if (!presence) {
        const bool isUnknown = m_module.isAnswering() && !m_plan.ledger.isEmpty();
        return {false, QString(),
                isUnknown ? tr("the trading module on this bus does not say which account it serves")
                          : QString()};
    }
    const QString objection =
        servesAnother(*presence, m_plan.ledger)
            ? tr("the trading module on this bus serves another account: %1").arg(presence->ledger)
            : QString();
    return {presence->knows(Trading::Capability::CLIENTNO), presence->account(), objection,
            presence->knows(Trading::Capability::REPLACE), presence->knows(Trading::Capability::OPENORDERS)};
}

/// At the prices of a replay nothing is ordered for an account that does not practise its day.
DeskModule TradingSession::moduleForOrders() const
{
    DeskModule module = moduleForDesk();
    const bool isReplayOfOther = m_replay.state() != Replay::State::Closed && !m_plan.practised;
    if (module.objection.isEmpty() && isReplayOfOther) {
        module.objection = tr("this account does not practise the replayed day: end the replay first");
    }
    return module;
}

void TradingSession::noteLeft()
{
    m_isLeft = m_isLeft || m_stage == Stage::Trading;
}

bool TradingSession::moduleKnows(const char *capability) const
{
    const auto presence = m_module.presence();
    return presence && presence->knows(capability);
}

void TradingSession::begin()
{
    enter(Stage::Awaiting);
}

void TradingSession::join()
{
    if (std::exchange(m_hasJoined, true)) {
        return;
    }
    m_module.start(m_busAddress);
    m_desk.start(m_busAddress);
    m_quotes.start(m_busAddress);
    m_statementActions.start(m_busAddress);
    m_shared.start(m_busAddress);
}

QString TradingSession::openReplay(const ChartData &day)
{
    const bool wasClosed = m_replay.state() == Replay::State::Closed;
    const auto &practised = m_plan.practised;
    const bool isOther = practised && (day.security.code != practised->code || day.bars.empty() ||
                                       dayOf(day.bars.front()) != practised->day);
    if (isOther) {
        return tr("This account practises %1 on %2: begin another practice for another day.")
            .arg(practised->code, practised->day.dashedText());
    }
    if (!m_replayLock.acquire()) {
        return m_replayLock.problem();
    }
    const std::optional<Trading::ClockTime> reached = m_reached;
    if (m_replay.open(m_source.raw(day), Trading::TradingDate::today())) {
        if (practised && reached) {
            m_replay.playTo(*reached);
        }
        m_openedAt = m_replay.completed();
        hideFuture();
        return {};
    }
    if (wasClosed) {
        m_replayLock.release();
    }
    return tr("Only a chart of minutes can be replayed.");
}

/// Nobody who practises a day knows how it ends, nor what came after it.
void TradingSession::hideFuture()
{
    if (m_plan.practised) {
        m_source.practise(m_plan.practised->day);
        m_prices.forgetCloses();
    }
}

QString TradingSession::endReplay()
{
    if (m_plan.practised && m_replay.state() != Replay::State::Closed) {
        m_replay.pause();
        return tr("A practice is its replay: it stands still now, and Space plays on. Close the window to "
                  "leave it.");
    }
    m_replay.close();
    return {};
}

QString TradingSession::standstill() const
{
    const Replay::State state = m_replay.state();
    if (!m_plan.practised || state == Replay::State::Playing) {
        return {};
    }
    return state == Replay::State::Paused
               ? tr("The practised day stands still: the order waits until it is played on.")
               : tr("The practised day is over: nothing is dealt any more.");
}

QString TradingSession::restartReplay()
{
    if (m_hasOrders) {
        return whyNotBegunAgain();
    }
    m_replay.restart();
    return {};
}

QString TradingSession::whyNotBegunAgain() const
{
    return tr("Orders were placed in this replay: it cannot begin again under them. A practice can, from "
              "nothing.");
}

void TradingSession::noteProgress()
{
    if (m_plan.practised && m_replay.completed() > 0) {
        m_reached = endOf(m_replay.day()[m_replay.completed() - 1]);
    }
}

void TradingSession::takeFolder(const DataFolder &folder)
{
    m_source.setFolder(folder);
    m_prices.forgetCloses();
}

BusGates TradingSession::gates()
{
    return {busGate(m_busAddress), m_module.answerGate()};
}

/// The only place where the stage changes; what a stage brings with it is done here, in order.
void TradingSession::enter(Stage stage)
{
    const bool isGoing = hasBegun();
    m_stage = stage;
    m_patience.stop(); // it was for the stage before: nothing that goes already is begun again
    switch (stage) {
    case Stage::Apart:
        break;
    case Stage::Awaiting:
        if (m_plan.patience) {
            m_patience.start(*m_plan.patience);
        }
        break;
    case Stage::Alone:
        if (m_plan.playsAlone && !isGoing) {
            playAtOnce();
            playOn();
        }
        Q_EMIT overlaysDue();
        if (replays() && !m_plan.playsAlone && !isGoing) {
            Q_EMIT replayWaits();
        }
        break;
    case Stage::Informing:
        playAtOnce();
        m_feed.askWhetherTaken();
        break;
    case Stage::Trading:
        // The last quotes may have dealt orders, and what was asked before the trading module came is lost.
        m_desk.askAnew();
        Q_EMIT overlaysDue();
        if (!isGoing) {
            playOn();
        }
        break;
    }
    Q_EMIT stageChanged(stage);
}

/// The day begins when a trading module answers and the quotes have their way to it; they are not for the
/// orders of another account.
void TradingSession::enterWhenHeard()
{
    const bool isWaitedFor = m_stage == Stage::Awaiting || m_stage == Stage::Alone;
    const bool isOurs = m_module.isAnswering() && moduleForDesk().objection.isEmpty();
    if (isWaitedFor && isOurs && m_feed.isJoined()) {
        enter(replays() && !hasBegun() ? Stage::Informing : Stage::Trading);
    }
}

/// The day begins again, for those who did not hear of its first bar; one that goes on was heard.
void TradingSession::playAtOnce()
{
    if (!replays()) {
        return;
    }
    if (goesOn()) {
        m_feed.tellMissedOrders();
    } else {
        m_replay.restart();
    }
    if (m_plan.replayTo) {
        m_replay.playTo(*m_plan.replayTo);
    }
}

void TradingSession::playOn()
{
    if (replays() && m_plan.playsOn) {
        m_replay.play();
    }
}

/// An account that practises has the recorded day for its own: only the charts' today moves on.
void TradingSession::passMidnight()
{
    const bool isOpen = m_replay.state() != Replay::State::Closed;
    if (!isOpen || dayOf(m_replay.day().front()) == Trading::TradingDate::today()) {
        return;
    }
    if (m_plan.practised) {
        m_replay.moveTo(Trading::TradingDate::today());
    } else {
        m_replay.pause();
        Q_EMIT replayOutlivedItsDay();
    }
}

/// True when the planned replay goes without a trading module: it must not be begun again when one comes.
bool TradingSession::hasBegun() const
{
    const bool isWaiting = m_stage == Stage::Awaiting || m_stage == Stage::Alone;
    return (m_stage == Stage::Alone && m_plan.playsAlone) || (isWaiting && isMovedByHand());
}

bool TradingSession::isMovedByHand() const
{
    return replays() && (m_replay.state() != Replay::State::Paused || m_replay.completed() != m_openedAt);
}

/// True for the planned replay, until its user ends it; one that was opened by hand goes its own way.
bool TradingSession::replays() const
{
    return m_plan.replaySpeed > 0 && m_replay.state() != Replay::State::Closed;
}

} // namespace Terminal
