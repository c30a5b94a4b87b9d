// Orders are placed while one of two modules serves and the other stands by; both are killed, ended and
// frozen at random, and so is the broker. What is not answered is asked again with its number. In the end
// each number has one order, and the account adds up.
//
//     TRADE_PLACEMENTS=1000 TRADE_PLACEMENT_SEED=7 ledger_sqlite_test --gtest_filter='RepeatedPlacement.*'
#include "tests/trademodule/support/LedgerAudit.h"
#include "tests/trademodule/support/ProgramFixture.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/ledger/OrderBook.h"
#include "trademodule/ledger/ServingTable.h"
#include "trading/ModuleVocabulary.h"
#include "trading/Question.h"

#include <QElapsedTimer>

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

constexpr char answerChannel[] = "desk";

unsigned numberOf(const char *variable, unsigned otherwise)
{
    bool isNumber = false;
    const unsigned number = qEnvironmentVariable(variable).toUInt(&isNumber);
    return isNumber ? number : otherwise;
}

/// An order to place, by the number that its asker gives it.
struct Placement
{
    Direction direction = Direction::Buy;
    Money price;
    qint64 quantity = 0;
    QString orderNumber; ///< as it was answered; empty before
    QElapsedTimer asked; ///< when it was asked last
};

/// Asks for orders, a few at a time, and again for what is not answered.
class PatientTrader
{
public:
    /// `meanwhile` is done again and again while it waits for answers.
    PatientTrader(RecordingEndPoint *endPoint, unsigned seed, std::function<void()> meanwhile)
        : m_endPoint(endPoint),
          m_random(seed),
          m_meanwhile(std::move(meanwhile))
    {
    }

    int between(int least, int most)
    {
        return static_cast<int>(std::uniform_int_distribution<>(least, most)(m_random));
    }

    /// Goes on until so many placements are answered; false when it takes too long.
    bool placeUntil(int answered)
    {
        return waitUntil(
            [&] {
                m_meanwhile();
                hear();
                askAgain();
                while (m_placements.size() < std::min(answered, m_answered + mostOpen)) {
                    askNew();
                }
                return m_answered >= answered;
            },
            std::chrono::minutes(1));
    }

    void hear()
    {
        for (const RecordingEndPoint::Message &message : qAsConst(m_endPoint->messages)) {
            hearAnswer(jsonOf(message.payload));
        }
        m_endPoint->messages.clear();
    }

    const QVector<Placement> &placements() const { return m_placements; }
    int repeated() const { return m_repeated; }
    /// Why a placement was not taken, as it was answered last.
    std::string lastRefusal() const { return m_lastRefusal; }

    static QString clientNumber(int index) { return QStringLiteral("desk-%1").arg(index); }

private:
    static constexpr int mostOpen = 4;
    static constexpr int patience = 300; // milliseconds until it asks again

    void askNew()
    {
        Placement placement;
        placement.direction = between(0, 1) == 0 ? Direction::Buy : Direction::Sell;
        placement.price = Money::ofCents(between(980, 1020));
        placement.quantity = 100 * between(1, 20);
        m_placements.append(placement);
        ask(m_placements.size() - 1);
        if (between(0, 2) == 0) {
            quote();
        }
    }

    void askAgain()
    {
        for (int index = 0; index < m_placements.size(); ++index) {
            const Placement &placement = m_placements[index];
            if (placement.orderNumber.isEmpty() && placement.asked.hasExpired(patience)) {
                ++m_repeated;
                ask(index);
            }
        }
    }

    void ask(int index)
    {
        Placement &placement = m_placements[index];
        Question question(CmdType::ENTRUSTPLACE);
        question.answerOn(QLatin1String(answerChannel));
        question.setSecurity(bank());
        question.setNewOrder(placement.direction, placement.price, placement.quantity);
        question.setClientNumber(clientNumber(index));
        placement.asked.start();
        m_endPoint->sendMessage(Channel::GLOBAL, TradeChart::Topic::TRADEQUERY, question.toJson());
    }

    /// A bar of a hundredth of a second: time never goes back, however long this lasts.
    void quote()
    {
        const QTime time = QTime(9, 30).addMSecs(10 * ++m_quotes);
        const QString price = Money::ofCents(between(985, 1015)).text();
        QJsonObject quote{{QLatin1String(STKCODE), bank().code},
                          {QLatin1String(MARKET), marketLetters(bank().market)},
                          {QLatin1String(QuoteFields::DATE), TradingDate::today().text()},
                          {QLatin1String(QuoteFields::TIME), ClockTime::ofClock(time)->text()},
                          {QLatin1String(QuoteFields::VOLUME), QString::number(between(1, 40000))},
                          {QLatin1String(QuoteFields::PRECLOSE), QStringLiteral("10.00")}};
        for (const char *const key :
             {QuoteFields::OPEN, QuoteFields::HIGH, QuoteFields::LOW, QuoteFields::CLOSE}) {
            quote[QLatin1String(key)] = price;
        }
        m_endPoint->sendMessage(Channel::MARKET, Topic::QUOTE, QJsonDocument(quote).toJson());
    }

    void hearAnswer(const QJsonObject &answer)
    {
        if (!answer[QLatin1String(SUCCESS)].toBool()) {
            m_lastRefusal = answer[QLatin1String(MSG)].toString().toStdString();
            EXPECT_EQ(answer[QLatin1String(ERRCODE)], QJsonValue(2))
                << QJsonDocument(answer).toJson().toStdString();
            return;
        }
        const QString clientNumber = answer[QLatin1String(PlaceFields::CLIENTNO)].toString();
        const QString number = answer[QLatin1String(RTSORDERNO)].toString();
        Placement &placement = m_placements[clientNumber.section(QLatin1Char('-'), 1).toInt()];
        if (placement.orderNumber.isEmpty()) {
            placement.orderNumber = number;
            ++m_answered;
        }
        EXPECT_EQ(placement.orderNumber, number) << clientNumber.toStdString() << " was placed twice";
    }

    RecordingEndPoint *const m_endPoint;
    std::mt19937 m_random;
    const std::function<void()> m_meanwhile;
    QVector<Placement> m_placements;
    int m_answered = 0;
    int m_repeated = 0;
    int m_quotes = 0;
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
        book({fill(Side::Buy, bank(), 20240102, 10, 100000000)});
        OrderBook orders(&ledger());
        Transaction transaction = orders.begin();
        orders.setCash(m_openingCash);
        transaction.commit();
        ASSERT_TRUE(chart().join(broker().address()));
        ASSERT_TRUE(chart().listen(answerChannel, TradeChart::Topic::TRADEQUERY));
        keepTwoModules();
    }

    void TearDown() override
    {
        for (const auto &module : m_modules) {
            if (module->state() != QProcess::NotRunning) {
                ::kill(static_cast<pid_t>(module->processId()), SIGCONT);
                module->terminate();
                EXPECT_TRUE(module->waitForFinished());
            }
        }
    }

    /// A new one for each that is gone.
    void keepTwoModules()
    {
        const auto isGone = [](const std::unique_ptr<QProcess> &module) {
            return module->state() == QProcess::NotRunning;
        };
        m_modules.erase(std::remove_if(m_modules.begin(), m_modules.end(), isGone), m_modules.end());
        while (m_modules.size() < 2) {
            m_modules.push_back(start(busOptions() + ledgerOptions() +
                                      QStringList{QStringLiteral("serve"), QStringLiteral("--standby")}));
        }
    }

    /// What is known when nothing goes on.
    std::string state(const PatientTrader &trader)
    {
        std::string state =
            "serving: " + std::to_string(servingProcess()) + "; last refusal: " + trader.lastRefusal();
        for (const auto &module : m_modules) {
            state += "\n" + std::to_string(module->processId()) + " in state " +
                     std::to_string(module->state()) + ", ends with " + std::to_string(module->exitCode()) +
                     ": " + module->readAllStandardError().toStdString();
        }
        return state;
    }

    qint64 servingProcess() { return ServingTable(ledger().database()).server().process.number; }

    /// The one that serves, three times in four.
    qint64 anyModule(PatientTrader *trader)
    {
        const qint64 serving = servingProcess();
        const bool isServing = trader->between(1, 4) > 1;
        for (const auto &module : m_modules) {
            if ((module->processId() == serving) == isServing) {
                return module->processId();
            }
        }
        return m_modules.front()->processId();
    }

    /// Something bad happens while orders are placed.
    void disturb(PatientTrader *trader, int answered)
    {
        const std::chrono::microseconds after(trader->between(0, 100000));
        const int dice = trader->between(1, 20);
        if (dice <= 9) {
            const LaterSignal killing(anyModule(trader), SIGKILL, after);
            ASSERT_TRUE(trader->placeUntil(answered)) << state(*trader);
        } else if (dice <= 12) {
            const LaterSignal ending(anyModule(trader), SIGTERM, after);
            ASSERT_TRUE(trader->placeUntil(answered)) << state(*trader);
        } else if (dice <= 14) {
            broker().kill();
            broker().start();
            ++m_brokers;
        } else {
            freeze(trader, after, dice == 20, answered);
        }
    }

    /// For long enough that the other one follows, or for a moment.
    void freeze(PatientTrader *trader, std::chrono::microseconds after, bool isForLong, int answered)
    {
        const qint64 process = anyModule(trader);
        const LaterSignal freezing(process, SIGSTOP, after);
        if (isForLong) {
            ++m_longFreezes;
            ASSERT_TRUE(trader->placeUntil(answered)) << state(*trader);
        }
        const LaterSignal waking(process, SIGCONT, after + std::chrono::milliseconds(200));
        ASSERT_TRUE(trader->placeUntil(answered)) << state(*trader);
    }

    void expectOneOrderEach(const PatientTrader &trader)
    {
        const Orders orders = OrderBook(&ledger()).ofDay(TradingDate::today());
        EXPECT_EQ(orders.size(), trader.placements().size());
        QHash<QString, Order> byNumber;
        for (const Order &order : orders) {
            byNumber.insert(order.clientNumber, order);
        }
        for (int index = 0; index < trader.placements().size(); ++index) {
            const Placement &placement = trader.placements()[index];
            const auto order = byNumber.constFind(PatientTrader::clientNumber(index));
            ASSERT_NE(order, byNumber.constEnd()) << index << " is lost";
            EXPECT_EQ(QString::number(order->number), placement.orderNumber);
            EXPECT_EQ(order->direction, placement.direction);
            EXPECT_EQ(order->price, placement.price);
            EXPECT_EQ(order->quantity, placement.quantity);
        }
    }

    const Money m_openingCash = Money::ofYuan(1e9).value();
    int m_brokers = 0;
    int m_longFreezes = 0;

private:
    std::vector<std::unique_ptr<QProcess>> m_modules;
};

} // namespace

TEST_F(RepeatedPlacement, GivesEachNumberOneOrderWhateverHappensToTheModules)
{
    constexpr int placementsPerDisturbance = 10;
    const unsigned seed = numberOf("TRADE_PLACEMENT_SEED", std::random_device()());
    const auto placements = static_cast<int>(numberOf("TRADE_PLACEMENTS", 100));
    SCOPED_TRACE("TRADE_PLACEMENT_SEED=" + std::to_string(seed));
    PatientTrader trader(&chart(), seed, [this] { keepTwoModules(); });
    QElapsedTimer clock;
    clock.start();

    int disturbances = 0;
    for (int answered = 0; answered < placements; answered = trader.placements().size()) {
        const int next = std::min(answered + placementsPerDisturbance, placements);
        ASSERT_NO_FATAL_FAILURE(disturb(&trader, next));
        ASSERT_TRUE(trader.placeUntil(next)) << state(trader);
        ++disturbances;
    }
    trader.hear();

    expectOneOrderEach(trader);
    EXPECT_THAT(audit(&ledger(), m_openingCash), IsEmpty());
    std::cout << "TRADE_PLACEMENT_SEED=" << seed << ": " << placements << " placements, " << trader.repeated()
              << " asked again, " << disturbances << " disturbances, of them " << m_longFreezes
              << " long freezes and " << m_brokers << " brokers killed; last fence "
              << ServingTable(ledger().database()).fence() << "; "
              << ledger().trades({TradingDate::today(), TradingDate::today()}).size() << " executions; "
              << clock.elapsed() << " ms" << std::endl;
}

} // namespace TradeModule
