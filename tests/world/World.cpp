#include "tests/world/World.h"

#include "tests/world/Randomness.h"
#include "tests/world/WorldHome.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace World {

using namespace std::chrono_literals;
using Terminal::OrderRecord;

namespace {

/// A Monday morning in a week without holidays, Shanghai's time.
const std::chrono::system_clock::time_point firstMorning{1710120600s}; // 2024-03-11 09:30

constexpr auto oneDay = 24h;
constexpr Instant longestFreeze = 9s;
constexpr Instant untilChartsAreBack = 5s;
constexpr Instant untilChartsAskAgain = 10s;
constexpr Instant longestReturn = 3s;
constexpr int daysInAWeek = 5;

} // namespace

World::World(std::uint64_t seed, std::size_t tail)
    : m_ledger(WorldHome::instance().newLedger()),
      m_dice(seed),
      m_trace(tail),
      m_time(SimulatedTime::instance())
{
    m_report.seed = seed;
    seedRandomness(m_dice.number());
    m_time->begin(firstMorning, [this](int socket) { return m_bus->isReadable(socket); });
    SimulatedClock::setEndServer([this] { endServer(); });
    m_bus = std::make_unique<SimulatedBus>(m_time, &m_dice, &m_trace);
    m_books = std::make_unique<Books>(m_ledger);
    m_market = std::make_unique<SimulatedMarket>(m_time, &m_dice);
    m_modulesWanted = m_dice.happens(30) ? 2 : 1;
    m_modules.push_back(std::make_unique<SimulatedModule>(m_time, m_ledger));
    for (std::int64_t terminals = m_dice.between(1, 2); terminals > 0; --terminals) {
        startTerminal();
    }
}

World::~World()
{
    m_terminals.clear();
    m_modules.clear();
    m_market.reset();
    m_books.reset();
    m_time->end();
    m_bus.reset();
}

Report World::live(int steps)
{
    while (m_report.step < steps) {
        ++m_report.step;
        step();
        checkStep();
    }
    calmDown();
    checkEnd();
    m_report.traceHash = m_trace.hash();
    m_report.bus = m_bus->counts();
    m_report.wishes = static_cast<int>(m_wishes.size());
    m_report.events = m_time->eventCount();
    m_report.longestWait = m_time->longestWait();
    m_report.lived = m_time->now();
    return m_report;
}

void World::checkStep()
{
    if (areBooksOld()) {
        check(Promise::BooksAgree, m_books->audit());
        check(Promise::BooksAgree, m_books->checkDealing(*m_market));
        check(Promise::WishesAreKept, m_books->checkWishes(m_wishes));
        check(Promise::WishesEnd, Books::checkGivenUp(m_wishes, m_troubledUntil + untilAnswered));
    }
    if (m_time->longestWait() > longestWait) {
        check(Promise::CallsReturn, {std::to_string(m_time->longestWait().count() / 1000000) + " ms"});
    }
    if (m_time->waitsInVainAgain()) {
        check(Promise::CallsReturn, {"a program stood still again and again for a module that hangs"});
    }
}

/// True when there is anything to look for in them that was not there at the last look.
bool World::areBooksOld()
{
    size_t told = m_wishes.size();
    for (const Wish &wish : m_wishes) {
        told += wish.outcomes.size();
    }
    const bool isMoreTold = std::exchange(m_toldCount, told) != told;
    return m_books->haveChanged() || isMoreTold;
}

void World::checkEnd()
{
    checkStep();
    check(Promise::WishesEnd, Books::checkEnded(m_wishes));
    compareDesks();
    checkCharts();
    checkReturn();
}

void World::compareDesks()
{
    for (const auto &terminal : m_terminals) {
        check(Promise::DesksAgree, m_books->checkShown(terminal.get()));
    }
}

/// What does not hold mostly goes on not to hold: the first time tells.
void World::check(Promise promise, const Books::Findings &findings)
{
    const bool isKnown = std::any_of(m_report.findings.begin(), m_report.findings.end(),
                                     [promise](const Finding &known) { return known.promise == promise; });
    if (findings.empty() || isKnown) {
        return;
    }
    if (m_report.findings.empty()) {
        m_report.tail = m_trace.tail().toStdString();
    }
    for (const std::string &text : findings) {
        m_report.findings.push_back({promise, m_report.step, text});
    }
}

/// Nothing of what is done is done twice: each step is one thing of the user, the market or of chance.
void World::step()
{
    replacePrograms();
    switch (m_dice.choose({40, 30, 8, 22})) {
    case 0:
        quote();
        break;
    case 1:
        trade();
        break;
    case 2:
        lookAround();
        break;
    default:
        disturb();
        break;
    }
    passTime();
}

/// Mostly a moment, so that things meet; at times long enough for everything to settle.
void World::passTime()
{
    switch (m_dice.choose({30, 30, 30, 10})) {
    case 0:
        run(someTime(2ms));
        break;
    case 1:
        run(someTime(100ms));
        break;
    case 2:
        run(someTime(1500ms));
        break;
    default:
        run(someTime(8s));
        break;
    }
}

void World::run(Instant duration)
{
    const bool wasTroubled = isTroubled();
    m_time->run(duration);
    m_troubledUntil = std::max(m_troubledUntil, m_bus->troubledUntil());
    if (wasTroubled || isTroubled()) {
        m_troubledUntil = std::max(m_troubledUntil, m_time->now());
    }
}

/// True while nobody can know how long an answer takes.
bool World::isTroubled() const
{
    const auto serves = [this](const auto &module) {
        return module->isServing() && !m_time->isFrozen(module->process());
    };
    const auto isFrozen = [this](const auto &terminal) { return m_time->isFrozen(terminal->process()); };
    return m_bus->troubledUntil() >= m_time->now() ||
           std::none_of(m_modules.begin(), m_modules.end(), serves) ||
           std::any_of(m_terminals.begin(), m_terminals.end(), isFrozen);
}

Instant World::someTime(Instant longest)
{
    return m_dice.time(Instant{}, longest);
}

// Users -----------------------------------------------------------------------------------------

SimulatedTerminal *World::anyTerminal()
{
    std::vector<SimulatedTerminal *> awake;
    for (const auto &terminal : m_terminals) {
        if (!m_time->isFrozen(terminal->process())) {
            awake.push_back(terminal.get());
        }
    }
    return awake.empty() ? nullptr
                         : awake[static_cast<size_t>(m_dice.below(static_cast<std::int64_t>(awake.size())))];
}

void World::trade()
{
    SimulatedTerminal *const terminal = anyTerminal();
    if (terminal == nullptr) {
        return;
    }
    switch (m_dice.choose({60, 20, 20})) {
    case 0:
        place(terminal);
        break;
    case 1:
        replace(terminal);
        break;
    default:
        cancel(terminal);
        break;
    }
}

void World::place(SimulatedTerminal *terminal)
{
    const bool isFirst = terminal->shown().code == SimulatedMarket::securities().front().code;
    Terminal::OrderRequest order;
    order.security = terminal->shown();
    order.side = m_dice.happens(55) ? Terminal::Direction::Buy : Terminal::Direction::Sell;
    const double near = static_cast<double>(m_dice.between(-20, 20)) / 100;
    order.price = std::round((m_market->price(isFirst ? 0 : 1) + near) * 100) / 100;
    if (m_dice.happens(4)) {
        order.price *= 2; // beyond the limits of the day
    }
    order.quantity = m_dice.between(1, 30) * 100;
    if (m_dice.happens(4)) {
        order.quantity += 50; // refused
    }
    const int times = m_dice.happens(15) ? 2 : 1;
    m_trace.note(m_time->now(), "place", order.security.code.toLatin1(), QByteArray::number(order.price));
    terminal->place(order, times);
}

/// Of those shown, which the ledger may have ended meanwhile.
const OrderRecord *World::anyOrder(SimulatedTerminal *terminal)
{
    const Terminal::OrderRecords &orders = terminal->desk().orders();
    if (orders.empty()) {
        return nullptr;
    }
    const auto count = static_cast<std::int64_t>(orders.size());
    const OrderRecord *chosen = &orders[static_cast<size_t>(m_dice.below(count))];
    for (std::int64_t tries = 0; tries < count && !isCancellable(*chosen) && m_dice.happens(90); ++tries) {
        chosen = &orders[static_cast<size_t>(m_dice.below(count))];
    }
    return chosen->day ? chosen : nullptr;
}

void World::replace(SimulatedTerminal *terminal)
{
    const OrderRecord *const order = anyOrder(terminal);
    if (order != nullptr && terminal->desk().canReplace()) {
        const double change = static_cast<double>(m_dice.between(-20, 20)) / 100;
        m_trace.note(m_time->now(), "replace", order->number.toLatin1());
        terminal->replace(OrderRecord(*order), std::round((order->price + change) * 100) / 100);
    }
}

void World::cancel(SimulatedTerminal *terminal)
{
    const OrderRecord *const order = anyOrder(terminal);
    if (order != nullptr) {
        m_trace.note(m_time->now(), "cancel", order->number.toLatin1());
        terminal->cancel(OrderRecord(*order));
    }
}

void World::lookAround()
{
    SimulatedTerminal *const terminal = anyTerminal();
    if (terminal == nullptr) {
        return;
    }
    switch (m_dice.choose({45, 45, 10})) {
    case 0:
        terminal->show(SimulatedMarket::securities()[static_cast<size_t>(m_dice.below(2))]);
        break;
    case 1:
        terminal->show(m_dice.happens(50) ? SimulatedChart::Kind::Intraday : SimulatedChart::Kind::Daily);
        break;
    default:
        terminal->changeTheme();
        break;
    }
}

void World::quote()
{
    const auto place = static_cast<size_t>(m_dice.below(2));
    m_dice.happens(12) ? m_market->repeat(place) : m_market->quote(place);
}

/// The machines were suspended for the night.
void World::beginDay()
{
    if (m_report.days == daysInAWeek) {
        return;
    }
    ++m_report.days;
    m_trace.note(m_time->now(), "day", QByteArray::number(m_report.days));
    SimulatedClock::moveTimeOfDay(oneDay);
    m_market->beginDay();
}

// Chance ----------------------------------------------------------------------------------------

void World::disturb()
{
    switch (m_dice.choose({30, 10, 12, 6, 6, 10, 14, 4, 8})) {
    case 0:
        m_bus->loseConnection();
        break;
    case 1:
        m_trace.note(m_time->now(), "delays", {});
        m_bus->setDelays(m_dice.time(20us, 5ms), m_dice.time(10ms, 900ms));
        break;
    case 2:
        m_bus->heal();
        break;
    case 3:
        m_trace.note(m_time->now(), "restart of the broker", {});
        m_bus->restart(someTime(4s));
        break;
    case 4:
        killModule();
        break;
    case 5:
        if (!m_modules.empty()) {
            m_bus->dieAtMessage(m_modules.front()->process(), static_cast<int>(m_dice.between(1, 6)));
        }
        break;
    case 6:
        freezeSomebody();
        break;
    case 7:
        killTerminal();
        break;
    default:
        beginDay();
        break;
    }
}

void World::killModule()
{
    if (m_modules.empty()) {
        return;
    }
    end(*m_modules[static_cast<size_t>(m_dice.below(static_cast<std::int64_t>(m_modules.size())))]);
}

/// As one that stands by does to one that has stood still for long.
void World::endServer()
{
    for (const auto &module : m_modules) {
        if (module->isServing() && !m_time->hasEnded(module->process())) {
            end(*module);
        }
    }
}

void World::end(const SimulatedModule &module)
{
    m_trace.note(m_time->now(), "kill of a module", QByteArray::number(module.process()));
    m_time->kill(module.process());
    m_bus->loseConnections(module.process());
}

void World::killTerminal()
{
    const auto place = static_cast<size_t>(m_dice.below(static_cast<std::int64_t>(m_terminals.size())));
    const Process process = m_terminals[place]->process();
    m_trace.note(m_time->now(), "kill of a terminal", QByteArray::number(process));
    m_time->kill(process);
    m_bus->loseConnections(process);
    m_terminals.erase(m_terminals.begin() + static_cast<std::ptrdiff_t>(place));
    ++m_report.killedTerminals;
    startTerminal();
}

void World::freezeSomebody()
{
    const bool isModule = !m_modules.empty() && m_dice.happens(70);
    const Process process = isModule ? m_modules.front()->process() : m_terminals.front()->process();
    ++m_report.frozen;
    m_trace.note(m_time->now(), "freeze", QByteArray::number(process));
    m_time->freeze(process, m_time->now() + someTime(longestFreeze));
}

void World::startTerminal()
{
    m_terminals.push_back(
        std::make_unique<SimulatedTerminal>(m_time, WorldHome::instance().dataFolder(), &m_wishes));
    m_terminals.back()->show(SimulatedMarket::securities()[static_cast<size_t>(m_dice.below(2))]);
}

/// Who looks after the modules starts another one a moment after one has ended.
void World::replacePrograms()
{
    const auto hasEnded = [this](const std::unique_ptr<SimulatedModule> &module) {
        return module->isOutrun() || m_time->hasEnded(module->process());
    };
    const auto ended = std::remove_if(m_modules.begin(), m_modules.end(), hasEnded);
    if (ended != m_modules.end()) {
        m_report.killedModules += static_cast<int>(m_modules.end() - ended);
        m_modules.erase(ended, m_modules.end());
        m_nextModule = m_time->now() + someTime(3s);
    }
    if (m_modules.size() < m_modulesWanted && m_time->now() >= m_nextModule) {
        m_modules.push_back(std::make_unique<SimulatedModule>(m_time, m_ledger));
        m_trace.note(m_time->now(), "start of a module", QByteArray::number(m_modules.back()->process()));
    }
}

// The end ---------------------------------------------------------------------------------------

/// Whoever stood still goes on, and modules are looked after as before.
void World::calmDown()
{
    m_trace.note(m_time->now(), "calm", {});
    m_bus->heal();
    const Instant end = m_time->allAwake() + timeToAgree;
    while (m_time->now() < end && (m_time->now() < m_troubledUntil + untilChartsAreBack || !areAllAgreed())) {
        replacePrograms();
        run(1s);
    }
}

bool World::areAllAgreed()
{
    return Books::checkEnded(m_wishes).empty() &&
           std::all_of(m_terminals.begin(), m_terminals.end(),
                       [this](const auto &terminal) { return m_books->checkShown(terminal.get()).empty(); });
}

/// A chart that was open through all of it and one that is opened now show the same, once the new one has
/// asked again for the first time: at first it asks for earlier days, and only then for today.
void World::checkCharts()
{
    std::vector<std::unique_ptr<SimulatedChart>> fresh;
    for (const auto &terminal : m_terminals) {
        fresh.push_back(terminal->openBeside());
    }
    const auto repaint = [this, &fresh] {
        for (size_t i = 0; i < fresh.size(); ++i) {
            m_terminals[i]->repaint(fresh[i].get());
        }
        m_time->run(1s);
    };
    for (const Instant end = m_time->now() + untilChartsAskAgain + 3s; m_time->now() < end;) {
        repaint();
    }
    repaint(); // with what came last
    for (size_t i = 0; i < fresh.size(); ++i) {
        compareCharts(*m_terminals[i], *fresh[i]);
    }
}

void World::compareCharts(const SimulatedTerminal &terminal, const SimulatedChart &fresh)
{
    if (terminal.drawing() != fresh.drawing()) {
        check(Promise::ChartsAgree,
              {"a chart shows\n" + terminal.drawing() + "and one that is opened now\n" + fresh.drawing()});
    }
}

/// Whoever was off the bus for a moment does not leave it to his heartbeat to find out what he has missed.
void World::checkReturn()
{
    std::vector<int> connections;
    for (const auto &terminal : m_terminals) {
        connections.push_back(m_bus->connectionCount(terminal->process()));
        m_bus->loseConnections(terminal->process());
    }
    m_books->add(WorldHome::purchases());
    for (const Instant end = m_time->now() + longestReturn; !areBack(connections) && m_time->now() < end;) {
        m_time->run(10ms);
    }
    m_time->run(timeToCatchUp);
    compareDesks();
}

bool World::areBack(const std::vector<int> &connections) const
{
    for (size_t i = 0; i < connections.size(); ++i) {
        if (m_bus->connectionCount(m_terminals[i]->process()) < connections[i]) {
            return false;
        }
    }
    return true;
}

} // namespace World
