// A terminal places orders while one of two modules serves and the other stands by. Modules, broker and
// terminal are killed, ended and frozen at random and started again; what is not answered is asked again with
// its number, also by a terminal that was killed before it heard the answer. In the end each number has one
// order, and the account adds up.
//
//     TRADE_PLACEMENTS=1000 TRADE_PLACEMENT_SEED=7 ledger_sqlite_test --gtest_filter='RepeatedPlacement.*'
//
// With TRADE_PLACEMENT_KILLS=only every disturbance kills a module, the serving one three times in four.
#include "tests/trademodule/support/LedgerAudit.h"
#include "tests/trademodule/support/ProgramFixture.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/ledger/OrderBook.h"
#include "trademodule/ledger/ServingTable.h"
#include "trading/ModuleVocabulary.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <chrono>
#include <csignal>
#include <iostream>
#include <random>
#include <thread>

namespace TradeModule {

namespace {

using namespace TradeChart::TradeKeyFields;
using namespace Trading;
using ::testing::IsEmpty;

/// An order to place.
struct Placement
{
    Direction direction = Direction::Buy;
    Money price;
    qint64 quantity = 0;
    QString orderNumber; ///< as it was answered; empty before
};

/// What the terminal is to place and what it was answered, in two files that outlive it.
class Placements
{
public:
    explicit Placements(unsigned seed) : m_random(seed)
    {
        EXPECT_TRUE(m_plan.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        EXPECT_TRUE(m_journal.open(QIODevice::ReadWrite));
    }

    int between(int least, int most)
    {
        return static_cast<int>(std::uniform_int_distribution<>(least, most)(m_random));
    }

    /// Plan and journal, for the terminal's command line.
    QStringList files() const { return {m_plan.fileName(), m_journal.fileName()}; }

    static QString clientNumber(int index) { return QStringLiteral("desk-%1").arg(index); }

    void add()
    {
        Placement placement;
        placement.direction = between(0, 1) == 0 ? Direction::Buy : Direction::Sell;
        placement.price = Money::ofCents(between(980, 1020));
        placement.quantity = 100 * between(1, 20);
        const char *const side = placement.direction == Direction::Buy ? "buy" : "sell";
        m_plan.write(QStringLiteral("%1 %2 %3 %4\n")
                         .arg(clientNumber(m_all.size()), QLatin1String(side), placement.price.text())
                         .arg(placement.quantity)
                         .toLatin1());
        m_all.append(placement);
    }

    /// Takes what the terminal has written since the last time.
    void read()
    {
        m_unread += m_journal.readAll();
        for (int end = m_unread.indexOf('\n'); end >= 0; end = m_unread.indexOf('\n')) {
            const QList<QByteArray> words = m_unread.left(end).split(' ');
            m_unread.remove(0, end + 1);
            if (words[0] == "placed") {
                takeAnswer(QString::fromLatin1(words.value(1)), QString::fromLatin1(words.value(2)));
            } else if (words[0] == "refused") {
                m_lastRefusal = words.mid(2).join(' ').toStdString();
            } else {
                ++m_asked;
            }
        }
    }

    const QVector<Placement> &all() const { return m_all; }
    int answered() const { return m_answered; }
    int repeated() const { return m_asked - m_all.size(); }
    /// Why a placement was not taken, as it was answered last.
    std::string lastRefusal() const { return m_lastRefusal; }

private:
    void takeAnswer(const QString &clientNumber, const QString &orderNumber)
    {
        Placement &placement = m_all[clientNumber.section(QLatin1Char('-'), 1).toInt()];
        if (placement.orderNumber.isEmpty()) {
            placement.orderNumber = orderNumber;
            ++m_answered;
        }
        EXPECT_EQ(placement.orderNumber, orderNumber) << clientNumber.toStdString() << " was placed twice";
    }

    QTemporaryDir m_folder;
    QFile m_plan{m_folder.filePath(QStringLiteral("plan"))};
    QFile m_journal{m_folder.filePath(QStringLiteral("journal"))};
    QByteArray m_unread; // the beginning of a line
    std::mt19937 m_random;
    QVector<Placement> m_all;
    int m_answered = 0;
    int m_asked = 0;
    std::string m_lastRefusal;
};

/// Sends a process a signal after a while, from a thread of its own: at any point of its work.
class LaterSignal
{
public:
    LaterSignal(qint64 process, int signal, std::chrono::microseconds after)
        : m_thread([process, signal, after] {
              std::this_thread::sleep_for(after);
              ::kill(static_cast<pid_t>(process), signal);
          })
    {
    }
    ~LaterSignal() { m_thread.join(); }
    Q_DISABLE_COPY_MOVE(LaterSignal)

private:
    std::thread m_thread;
};

class RepeatedPlacement : public ProgramOnABus
{
protected:
    void SetUp() override
    {
        ProgramOnABus::SetUp();
        if (IsSkipped()) {
            return;
        }
        if (terminalProgram().isEmpty()) {
            GTEST_SKIP() << "THE TERMINAL IS NOT BUILT: nobody places orders";
        }
        book({fill(Side::Buy, bank(), 20240102, 10, 100000000)});
        OrderBook orders(&ledger());
        Transaction transaction = orders.begin();
        orders.setCash(m_openingCash);
        transaction.commit();
        ASSERT_TRUE(chart().join(broker().address()));
        keepRunning();
    }

    void TearDown() override
    {
        if (m_terminal) {
            m_terminal->kill();
            m_terminal->waitForFinished();
        }
        for (const auto &module : m_modules) {
            if (module->state() != QProcess::NotRunning) {
                ::kill(static_cast<pid_t>(module->processId()), SIGCONT);
                module->terminate();
                EXPECT_TRUE(module->waitForFinished());
            }
        }
    }

    /// Goes on until so many placements are answered; false when it takes too long.
    bool placeUntil(int answered)
    {
        return waitUntil(
            [&] {
                keepRunning();
                m_placements.read();
                while (m_placements.all().size() < std::min(answered, m_placements.answered() + mostOpen)) {
                    placeNext();
                }
                return m_placements.answered() >= answered;
            },
            std::chrono::minutes(2));
    }

    /// Something bad happens while orders are placed.
    void disturb(int answered)
    {
        const std::chrono::microseconds after(m_placements.between(0, 100000));
        const int dice = m_placements.between(1, m_onlyKills ? 7 : 25);
        if (dice <= 7) {
            ++m_modulesKilled;
            send(SIGKILL, anyModule(), after, answered);
        } else if (dice <= 9) {
            send(SIGTERM, anyModule(), after, answered);
        } else if (dice <= 14) {
            ++m_terminalsKilled;
            send(SIGKILL, m_terminal->processId(), after, answered);
        } else if (dice <= 17) {
            freeze(m_terminal->processId(), after, false, answered);
        } else if (dice <= 19) {
            broker().kill();
            broker().start();
            ++m_brokersKilled;
        } else if (dice <= 21) {
            ++m_brokersFrozen;
            freeze(broker().processId(), after, false, answered);
        } else {
            freeze(anyModule(), after, dice == 25 && m_isLongRun, answered);
        }
    }

    void expectOneOrderEach()
    {
        const QVector<Placement> &placements = m_placements.all();
        const Orders orders = OrderBook(&ledger()).ofDay(TradingDate::today());
        EXPECT_EQ(orders.size(), placements.size());
        QHash<QString, Order> byNumber;
        for (const Order &order : orders) {
            byNumber.insert(order.clientNumber, order);
        }
        for (int index = 0; index < placements.size(); ++index) {
            const Placement &placement = placements[index];
            const auto order = byNumber.constFind(Placements::clientNumber(index));
            ASSERT_NE(order, byNumber.constEnd()) << index << " is lost";
            EXPECT_EQ(QString::number(order->number), placement.orderNumber);
            EXPECT_EQ(order->direction, placement.direction);
            EXPECT_EQ(order->price, placement.price);
            EXPECT_EQ(order->quantity, placement.quantity);
        }
    }

    /// What is known when nothing goes on.
    std::string state()
    {
        std::string state =
            "serving: " + std::to_string(servingProcess()) + "; last refusal: " + m_placements.lastRefusal();
        for (const auto &module : m_modules) {
            state += "\n" + std::to_string(module->processId()) + " in state " +
                     std::to_string(module->state()) + ", ends with " + std::to_string(module->exitCode()) +
                     ": " + module->readAllStandardError().toStdString();
        }
        return state + "\nterminal: " + m_terminal->readAllStandardError().toStdString();
    }

    const unsigned m_seed = numberOf("TRADE_PLACEMENT_SEED", std::random_device()());
    const int m_count = static_cast<int>(numberOf("TRADE_PLACEMENTS", 100));
    const bool m_onlyKills = qEnvironmentVariable("TRADE_PLACEMENT_KILLS") == QLatin1String("only");
    const bool m_isLongRun =
        m_count >= 1000; ///< with freezes of more than ten seconds, as StandbyTest has one
    const Money m_openingCash = Money::ofYuan(1e9).value();
    Placements m_placements{m_seed};
    int m_modulesKilled = 0;
    int m_terminalsKilled = 0;
    int m_brokersKilled = 0;
    int m_brokersFrozen = 0;
    int m_longFreezes = 0;

private:
    static constexpr int mostOpen = 4;

    static QString terminalProgram() { return QStringLiteral(PLACING_TERMINAL); }

    /// A new one for each that is gone.
    void keepRunning()
    {
        const auto isGone = [](const std::unique_ptr<QProcess> &process) {
            return !process || process->state() == QProcess::NotRunning;
        };
        m_modules.erase(std::remove_if(m_modules.begin(), m_modules.end(), isGone), m_modules.end());
        while (m_modules.size() < 2) {
            m_modules.push_back(start(busOptions() + ledgerOptions() +
                                      QStringList{QStringLiteral("serve"), QStringLiteral("--standby")}));
        }
        if (isGone(m_terminal)) {
            m_terminal = std::make_unique<QProcess>();
            m_terminal->start(terminalProgram(), QStringList{broker().address()} + m_placements.files());
            EXPECT_TRUE(m_terminal->waitForStarted());
        }
    }

    void placeNext()
    {
        m_placements.add();
        if (m_placements.between(0, 2) == 0) {
            quote();
        }
    }

    /// A bar of a hundredth of a second: time never goes back, however long this lasts.
    void quote()
    {
        const QTime time = QTime(9, 30).addMSecs(10 * ++m_quotes);
        const QString price = Money::ofCents(m_placements.between(985, 1015)).text();
        QJsonObject quote{
            {QLatin1String(STKCODE), bank().code},
            {QLatin1String(MARKET), marketLetters(bank().market)},
            {QLatin1String(QuoteFields::DATE), TradingDate::today().text()},
            {QLatin1String(QuoteFields::TIME), ClockTime::ofClock(time)->text()},
            {QLatin1String(QuoteFields::VOLUME), QString::number(m_placements.between(1, 40000))},
            {QLatin1String(QuoteFields::PRECLOSE), QStringLiteral("10.00")}};
        for (const char *const key :
             {QuoteFields::OPEN, QuoteFields::HIGH, QuoteFields::LOW, QuoteFields::CLOSE}) {
            quote[QLatin1String(key)] = price;
        }
        chart().sendMessage(Channel::MARKET, Topic::QUOTE, QJsonDocument(quote).toJson());
    }

    qint64 servingProcess() { return ServingTable(ledger().database()).server().process.number; }

    /// The one that serves, three times in four.
    qint64 anyModule()
    {
        const qint64 serving = servingProcess();
        const bool isServing = m_placements.between(1, 4) > 1;
        for (const auto &module : m_modules) {
            if ((module->processId() == serving) == isServing) {
                return module->processId();
            }
        }
        return m_modules.front()->processId();
    }

    void send(int signal, qint64 process, std::chrono::microseconds after, int answered)
    {
        const LaterSignal sending(process, signal, after);
        ASSERT_TRUE(placeUntil(answered)) << state();
    }

    /// For long enough that the other module follows, or for a moment.
    void freeze(qint64 process, std::chrono::microseconds after, bool isForLong, int answered)
    {
        constexpr std::chrono::milliseconds moment(200);
        const LaterSignal freezing(process, SIGSTOP, after);
        if (isForLong) {
            ++m_longFreezes;
            ASSERT_TRUE(placeUntil(answered)) << state();
        }
        const LaterSignal waking(process, SIGCONT, after + moment);
        ASSERT_TRUE(placeUntil(answered)) << state();
    }

    std::vector<std::unique_ptr<QProcess>> m_modules;
    std::unique_ptr<QProcess> m_terminal;
    int m_quotes = 0;
};

} // namespace

TEST_F(RepeatedPlacement, GivesEachNumberOneOrderWhateverHappensToModulesBrokerAndTerminal)
{
    const int placementsPerDisturbance = m_onlyKills ? 2 : 10;
    SCOPED_TRACE("TRADE_PLACEMENT_SEED=" + std::to_string(m_seed));
    QElapsedTimer clock;
    clock.start();

    int disturbances = 0;
    for (int answered = 0; answered < m_count; answered = m_placements.all().size()) {
        const int next = std::min(answered + placementsPerDisturbance, m_count);
        ASSERT_NO_FATAL_FAILURE(disturb(next));
        ASSERT_TRUE(placeUntil(next)) << state();
        ++disturbances;
    }
    m_placements.read();

    expectOneOrderEach();
    EXPECT_THAT(audit(&ledger(), m_openingCash), IsEmpty());
    std::cout << "TRADE_PLACEMENT_SEED=" << m_seed << ": " << m_count << " placements, "
              << m_placements.repeated() << " asked again, " << disturbances << " disturbances, of them "
              << m_longFreezes << " long freezes, " << m_modulesKilled << " modules killed, "
              << m_terminalsKilled << " terminals killed, " << m_brokersKilled << " brokers killed and "
              << m_brokersFrozen << " frozen; last fence " << ServingTable(ledger().database()).fence()
              << "; " << ledger().trades({TradingDate::today(), TradingDate::today()}).size()
              << " executions; " << clock.elapsed() << " ms" << std::endl;
}

} // namespace TradeModule
