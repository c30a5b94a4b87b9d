#pragma once

#include "tests/world/Books.h"
#include "tests/world/Dice.h"
#include "tests/world/SimulatedBus.h"
#include "tests/world/SimulatedMarket.h"
#include "tests/world/SimulatedModule.h"
#include "tests/world/SimulatedTerminal.h"
#include "tests/world/Trace.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace World {

/// What must hold in a world.
enum class Promise {
    BooksAgree,    ///< orders, executions, holdings and cash; no quote is dealt twice
    WishesAreKept, ///< what was confirmed is in the books once, what was refused is not
    WishesEnd,     ///< everybody knows what became of his orders, and nobody gives up where nothing is wrong
    DesksAgree,  ///< the terminals' desks show what the ledger holds, also right after they were off the bus
    ChartsAgree, ///< the overlays of an old chart draw what those of a new one do
    CallsReturn  ///< no question is waited for longer than its time-out, nor again and again in vain
};

/// That a promise did not hold.
struct Finding
{
    Promise promise;
    int step;
    std::string text;
};

/// What became of a world.
struct Report
{
    std::uint64_t seed = 0;
    int step = 0;                    ///< the last one that was done
    std::vector<Finding> findings{}; ///< the first of each promise that did not hold
    std::uint64_t traceHash = 0;     ///< the same for the same events in the same order
    std::string tail{};              ///< the last events before the first finding
    SimulatedBus::Counts bus{};
    int killedModules = 0;
    int killedTerminals = 0;
    int frozen = 0;
    int days = 1;
    int wishes = 0;
    qint64 events = 0;
    Instant longestWait{};
    Instant lived{};
};

/// A bus, trading modules on one ledger, terminals with their overlays and a market, in one thread and in
/// simulated time, all by one seed. Users trade and look around while connections are lost, messages come
/// late or twice, and programs stand still, end and come back. After every step the books are looked into. At
/// the end the faults end, and within timeToAgree everybody knows what became of his orders, and sees what
/// the ledger holds.
class World
{
public:
    static constexpr int defaultSteps = 30;
    static constexpr std::chrono::seconds timeToAgree{60};
    /// A question's time-out is three seconds; waits are rounded to a millisecond.
    static constexpr std::chrono::milliseconds longestWait{3001};
    /// Once nothing has been wrong for so long, whatever is waited for has come: everybody is on the bus
    /// again within two seconds, and what was asked in vain is asked again after three.
    static constexpr std::chrono::seconds untilAnswered{8};
    /// Once a terminal is back on the bus it knows so soon what it has missed.
    static constexpr std::chrono::milliseconds timeToCatchUp{500};

    /// So many of its last events are told when something does not hold.
    static constexpr std::size_t defaultTail = 60;

    explicit World(std::uint64_t seed, std::size_t tail = defaultTail);
    ~World();
    Q_DISABLE_COPY_MOVE(World)

    Report live(int steps = defaultSteps);

private:
    void step();
    void trade();
    void lookAround();
    void disturb();
    void replacePrograms();
    void passTime();

    SimulatedTerminal *anyTerminal();
    void place(SimulatedTerminal *terminal);
    const Terminal::OrderRecord *anyOrder(SimulatedTerminal *terminal);
    void replace(SimulatedTerminal *terminal);
    void cancel(SimulatedTerminal *terminal);
    void quote();
    void beginDay();
    void startTerminal();
    void killTerminal();
    void killModule();
    void endServer();
    void end(const SimulatedModule &module);
    void freezeSomebody();
    Instant someTime(Instant longest);
    void run(Instant duration);
    bool isTroubled() const;
    bool areBooksOld();

    void calmDown();
    bool areAllAgreed();
    void check(Promise promise, const Books::Findings &findings);
    void checkStep();
    void checkEnd();
    void checkCharts();
    void compareCharts(const SimulatedTerminal &terminal, const SimulatedChart &fresh);
    void checkReturn();
    bool areBack(const std::vector<int> &connections) const;
    void compareDesks();

    const QString m_ledger;
    Dice m_dice;
    Trace m_trace;
    SimulatedTime *const m_time;
    std::unique_ptr<SimulatedBus> m_bus;
    std::unique_ptr<Books> m_books;
    std::unique_ptr<SimulatedMarket> m_market;
    std::vector<Wish> m_wishes;
    std::vector<std::unique_ptr<SimulatedModule>> m_modules;
    std::vector<std::unique_ptr<SimulatedTerminal>> m_terminals;
    size_t m_modulesWanted = 1;
    Instant m_nextModule{};
    Instant m_troubledUntil{}; ///< as far as is known
    size_t m_toldCount = 0;    ///< outcomes, when the books were looked into last
    Report m_report;
};

} // namespace World
