#pragma once

#include "terminal/data/DataFolder.h"
#include "terminal/live/ChartSource.h"
#include "terminal/live/MarketWatch.h"
#include "terminal/live/QuoteListener.h"
#include "terminal/live/Today.h"
#include "terminal/replay/PlannedOrder.h"
#include "terminal/replay/Replay.h"
#include "terminal/services/Gate.h"
#include "terminal/services/ModuleWatch.h"
#include "terminal/services/SharedChannel.h"
#include "terminal/session/LastPrices.h"
#include "terminal/session/QuoteFeed.h"
#include "terminal/session/ReplayLock.h"
#include "terminal/session/StatementActions.h"
#include "terminal/trade/OrderDesk.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <optional>

namespace Terminal {

/// The recorded day that an account practises.
struct PractisedDay
{
    QString code;
    Trading::TradingDate day;
    /// How far it was dealt before: the trading module knows these minutes. Nothing: it begins.
    std::optional<Trading::ClockTime> reached;
};

/// What a terminal does with its trading day by itself.
struct DayPlan
{
    QString ledger;      ///< of the terminal's own trading module; empty: any module's will do
    int replaySpeed = 0; ///< Replay::slowest to fastest; 0: no day is replayed by itself
    /// The day is played at once up to this; nothing: it is played from its beginning.
    std::optional<Trading::ClockTime> replayTo;
    OrderPlan orders;    ///< placed while the day is played
    bool playsOn = true; ///< after that, minute by minute
    /// The account practises this day of this security and plays no other.
    std::optional<PractisedDay> practised;
    /// False: a replay waits for the trading module as long as it takes, for it is to take the replay's
    /// orders.
    bool playsAlone = true;
    /// How long everything else waits for a trading module; nothing: as long as it takes.
    std::optional<std::chrono::milliseconds> patience = std::chrono::seconds(2);
};

/// A trading day of the terminal: its bars, recorded, replayed or live; its quotes on the bus; the counter
/// where orders are placed; and whether a trading module answers.
///
/// Overlays ask some of their questions only once. So overlaysDue() tells when they may ask: when a trading
/// module answers, or after a moment without one, and again whenever one answers after none did. What a
/// replay has to play at once comes before: the overlays then ask a trading module that knows it.
class TradingSession : public QObject
{
    Q_OBJECT

public:
    enum class Stage {
        Apart,     ///< nobody is waited for yet
        Awaiting,  ///< a trading module is asked whether it is there
        Alone,     ///< none has answered for a moment; one that comes later is welcome
        Informing, ///< one answers, and takes what the replay had to play at once
        Trading,   ///< one answers and knows the day; nothing comes after this
    };

    /// On `busAddress`, which names the bus instance.
    TradingSession(const DataFolder &folder, DayPlan plan, const QString &busAddress);

    /// Starts to wait for a trading module. To be called once.
    void begin();

    /// Joins the bus, when there is one: a client that finds none writes a warning. Once; later calls do
    /// nothing.
    void join();

    /// Replays a day that was recorded, from its beginning, or from where the practice of it has come to,
    /// paused and in raw prices. Returns why it cannot be, for the user: `day` has no minutes or is not the
    /// one that is practised, or another program replays one on this account; then nothing changes.
    QString openReplay(const ChartData &day);

    /// Ends the replay. Returns why not, for the user: a practice has no other day to show, so it only
    /// pauses.
    QString endReplay();

    /// What becomes of an order that is placed now, where the practised day stands still; else empty.
    QString standstill() const;

    /// Begins the replayed day again. Returns why not, for the user: a market does not go back under an order
    /// that was placed in it.
    QString restartReplay();

    /// Brings the replay that was planned to where it is to begin, before anything listens.
    void playAtOnce();

    Stage stage() const { return m_stage; }

    /// The day that the account practises, if it does.
    const std::optional<PractisedDay> &practised() const { return m_plan.practised; }

    /// How far the practised day was played; nothing before its first minute.
    std::optional<Trading::ClockTime> reached() const { return m_reached; }

    /// The day whose rules of the market orders must keep to: the practised one, else today.
    Trading::TradingDate dayOfRules() const
    {
        return m_plan.practised ? m_plan.practised->day : m_today.date();
    }

    /// What overlays wait for on this bus. The session must outlive the gates.
    BusGates gates();

    /// The data folder has other files now.
    void takeFolder(const DataFolder &folder);

    /// The bars that charts can show.
    const ChartSource &source() const { return m_source; }
    /// What is known of the day that is under way.
    Today *today() { return &m_today; }
    Replay *replay() { return &m_replay; }
    OrderDesk *desk() { return &m_desk; }
    LastPrices *prices() { return &m_prices; }
    /// Whether the market goes on.
    MarketWatch *market() { return &m_market; }
    StatementActions *statementActions() { return &m_statementActions; }
    /// How things stand with the trading module.
    ModuleWatch *module() { return &m_module; }

Q_SIGNALS:
    void stageChanged(TradingSession::Stage stage);

    /// Overlays may ask now: to be started, or made anew when they were started before.
    void overlaysDue();

    /// No trading module has answered for a moment. The replay, which was to have one, waits; its user may
    /// play it all the same.
    void replayWaits();

    /// The replay's today is over, by the exchange's clock: nobody takes its quotes any more. It was paused.
    /// A practised day goes on.
    void replayOutlivedItsDay();

    /// Combined overlays have news.
    void heard(const SharedNews &news);

    /// An order of the plan was not taken, for this reason.
    void orderRefused(const QString &reason);

private:
    DeskModule moduleForDesk() const;
    DeskModule moduleForOrders() const;
    bool moduleKnows(const char *capability) const;
    void enter(Stage stage);
    void enterWhenHeard();
    void playOn();
    void passMidnight();
    void noteProgress();
    void noteLeft();
    void hideFuture();
    QString whyNotBegunAgain() const;
    bool goesOn() const { return m_plan.practised && m_plan.practised->reached; }
    bool hasBegun() const;
    bool isMovedByHand() const;
    bool replays() const;

    const DayPlan m_plan;
    const QString m_busAddress;
    Stage m_stage = Stage::Apart;
    bool m_isLeft = false; ///< nobody answered for a while, though the day goes on
    bool m_hasJoined = false;
    Replay m_replay{nullptr};
    Today m_today{&m_replay};
    ChartSource m_source;
    QuoteListener m_quotes{&m_today};
    MarketWatch m_market{&m_today};
    OrderDesk m_desk;
    LastPrices m_prices;
    StatementActions m_statementActions;
    QuoteFeed m_feed;
    ReplayLock m_replayLock;
    ModuleWatch m_module{nullptr};
    SharedChannel m_shared{nullptr};
    QTimer m_patience;
    QTimer m_midnight;                           ///< looks whether it has passed
    bool m_hasOrders = false;                    ///< placed while a day was replayed
    std::optional<Trading::ClockTime> m_reached; ///< of a practised day
    size_t m_openedAt = 0;                       ///< so many bars were complete when the replay was opened
};

} // namespace Terminal
