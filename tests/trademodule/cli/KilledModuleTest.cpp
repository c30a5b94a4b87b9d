// The serving program is killed at random moments of a busy day, again and again. Whatever it had said is
// in the ledger afterwards, once, and all that is in the ledger adds up.
//
//     TRADE_KILLS=300 TRADE_KILL_SEED=7 ledger_sqlite_test --gtest_filter='KilledModule.*'
#include "tests/trademodule/support/LedgerAudit.h"
#include "tests/trademodule/support/ProgramFixture.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/ledger/OrderBook.h"
#include "trading/ModuleVocabulary.h"

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

constexpr char answerChannel[] = "busy";
constexpr qint64 openingShares = 100000000;

QString yuanText(int cents)
{
    return QString::number(cents / 100.0, 'f', 2);
}

struct Asked
{
    SecurityId security;
    Direction direction = Direction::Buy;
    int cents = 0;
    qint64 quantity = 0;
};

/// Places orders, cancels some and moves the prices without waiting for answers, and keeps what it was
/// told.
class BusyTrader
{
public:
    BusyTrader(RecordingEndPoint *endPoint, unsigned seed) : m_endPoint(endPoint), m_random(seed) {}

    /// Hears what came and sends the next messages; a few questions are on their way at any time.
    void trade()
    {
        hear();
        while (m_openQuestions < mostOpenQuestions) {
            act();
        }
    }

    /// What was asked of a module that is gone needs no answer any more.
    void forgetOpenQuestions() { m_openQuestions = 0; }

    void hear()
    {
        for (const RecordingEndPoint::Message &message : qAsConst(m_endPoint->messages)) {
            const QJsonObject object = jsonOf(message.payload);
            message.topic == TradeChart::Topic::TRADENOTIFY ? hearNotification(object) : hearAnswer(object);
        }
        m_endPoint->messages.clear();
    }

    /// A number between the two, both included.
    int between(int least, int most)
    {
        return static_cast<int>(std::uniform_int_distribution<>(least, most)(m_random));
    }

    int answers() const { return m_answers; }
    const QVector<Asked> &asked() const { return m_asked; }
    /// Orders whose number came back, by that number.
    const QHash<qint64, Asked> &acknowledged() const { return m_acknowledged; }
    /// Orders whose cancellation was confirmed.
    const QSet<qint64> &cancelled() const { return m_cancelled; }
    /// The status that was told last of each order.
    const QHash<qint64, QString> &told() const { return m_told; }

private:
    static constexpr int mostOpenQuestions = 16;

    void act()
    {
        const int dice = between(1, 10);
        if (dice <= 4) {
            place();
        } else if (dice <= 8 && !m_numbers.isEmpty()) {
            cancel(m_numbers[between(std::max(0, m_numbers.size() - 8), m_numbers.size() - 1)]);
        } else {
            quote();
        }
    }

    SecurityId anySecurity() { return between(0, 1) == 0 ? bank() : liquor(); }

    void place()
    {
        const Asked order{anySecurity(), between(0, 2) == 0 ? Direction::Sell : Direction::Buy,
                          between(980, 1020), 100 * between(1, 50)};
        ask(order.security, CmdType::ENTRUSTPLACE,
            {{QLatin1String(OBJECTID), QString::number(m_asked.size())},
             {QLatin1String(RTSBSFLAG), QLatin1String(directionCode(order.direction))},
             {QLatin1String(RTSENTRUSTPRICE), yuanText(order.cents)},
             {QLatin1String(RTSENTRUSTQTY), QString::number(order.quantity)}});
        m_asked.append(order);
    }

    void cancel(qint64 number)
    {
        ask(m_acknowledged.value(number).security, TradeChart::CmdType::ENTRUSTCANCEL,
            {{QLatin1String(OBJECTID), QString::number(number)},
             {QLatin1String(RTSORDERDATE), TradingDate::today().text()},
             {QLatin1String(RTSORDERNO), QString::number(number)}});
    }

    void ask(const SecurityId &security, const char *command, QJsonObject question)
    {
        question[QLatin1String(CMD)] = QLatin1String(command);
        question[QLatin1String(SCREENID)] = QLatin1String(answerChannel);
        question[QLatin1String(STKCODE)] = security.code;
        question[QLatin1String(MARKET)] = marketLetters(security.market);
        send(Channel::GLOBAL, TradeChart::Topic::TRADEQUERY, question);
        ++m_openQuestions;
    }

    /// A bar of a hundredth of a second: time never goes back, however long this lasts.
    void quote()
    {
        const SecurityId security = anySecurity();
        const int middle = between(985, 1015);
        const QTime time = QTime(9, 30).addMSecs(10 * ++m_quotes % (2 * 3600 * 1000));
        send(Channel::MARKET, Topic::QUOTE,
             {{QLatin1String(STKCODE), security.code},
              {QLatin1String(MARKET), marketLetters(security.market)},
              {QLatin1String(QuoteFields::DATE), TradingDate::today().text()},
              {QLatin1String(QuoteFields::TIME), ClockTime::ofClock(time)->text()},
              {QLatin1String(QuoteFields::OPEN), yuanText(middle)},
              {QLatin1String(QuoteFields::HIGH), yuanText(middle + between(0, 10))},
              {QLatin1String(QuoteFields::LOW), yuanText(middle - between(0, 10))},
              {QLatin1String(QuoteFields::CLOSE), yuanText(middle)},
              {QLatin1String(QuoteFields::VOLUME), QString::number(between(1, 40000))},
              {QLatin1String(QuoteFields::PRECLOSE), yuanText(1000)}});
    }

    void send(const char *channel, const char *topic, const QJsonObject &message)
    {
        ASSERT_TRUE(
            m_endPoint->sendMessage(channel, topic, QJsonDocument(message).toJson(QJsonDocument::Compact)));
    }

    void hearAnswer(const QJsonObject &answer)
    {
        ++m_answers;
        m_openQuestions = std::max(0, m_openQuestions - 1);
        if (!answer[QLatin1String(SUCCESS)].toBool()) {
            return;
        }
        const qint64 id = answer[QLatin1String(OBJECTID)].toString().toLongLong();
        if (answer[QLatin1String(CMD)] == QLatin1String(CmdType::ENTRUSTPLACE)) {
            const qint64 number = answer[QLatin1String(RTSORDERNO)].toString().toLongLong();
            EXPECT_FALSE(m_acknowledged.contains(number)) << "order " << number << " is given twice";
            m_acknowledged.insert(number, m_asked[static_cast<int>(id)]);
            m_numbers.append(number);
        } else {
            m_cancelled.insert(id);
        }
    }

    void hearNotification(const QJsonObject &notification)
    {
        m_told.insert(notification[QLatin1String(RTSORDERNO)].toString().toLongLong(),
                      notification[QLatin1String(RTSORDERSTATUS)].toString());
    }

    RecordingEndPoint *const m_endPoint;
    std::mt19937 m_random;
    int m_openQuestions = 0;
    int m_answers = 0;
    int m_quotes = 0;
    QVector<Asked> m_asked; // by their "objectId"
    QVector<qint64> m_numbers;
    QHash<qint64, Asked> m_acknowledged;
    QSet<qint64> m_cancelled;
    QHash<qint64, QString> m_told;
};

/// Kills a process after a while, from a thread of its own: at any point of its work and of this test's.
class Killer
{
public:
    Killer(const QProcess &victim, std::chrono::microseconds after)
        : m_thread([id = static_cast<pid_t>(victim.processId()), after] {
              std::this_thread::sleep_for(after);
              ::kill(id, SIGKILL);
          })
    {
    }
    ~Killer() { m_thread.join(); }
    Q_DISABLE_COPY_MOVE(Killer)

private:
    std::thread m_thread;
};

class KilledModule : public ProgramOnABus
{
protected:
    void SetUp() override
    {
        ProgramOnABus::SetUp();
        if (IsSkipped()) {
            return;
        }
        book({fill(Side::Buy, bank(), 20240102, 10, openingShares),
              fill(Side::Buy, liquor(), 20240102, 10, openingShares)});
        OrderBook orders(&ledger());
        Transaction transaction = orders.begin();
        orders.setCash(m_openingCash);
        transaction.commit();
        ASSERT_TRUE(chart().join(broker().address()));
        ASSERT_TRUE(chart().listen(answerChannel, TradeChart::Topic::TRADEQUERY));
        ASSERT_TRUE(chart().listen(Channel::GLOBAL, TradeChart::Topic::TRADENOTIFY));
    }

    /// One life of the module; one in eight does not outlive its start.
    void liveAndDie(BusyTrader *trader)
    {
        startModule();
        const bool diesYoung = trader->between(1, 8) == 1;
        const int answersBefore = trader->answers();
        const auto isGone = [&] { return module().state() == QProcess::NotRunning; };
        if (!diesYoung) {
            ASSERT_TRUE(waitUntil([&] {
                trader->forgetOpenQuestions(); // nobody may have heard them
                trader->trade();
                return trader->answers() > answersBefore || isGone();
            }));
        }
        const Killer killer(module(), std::chrono::microseconds(trader->between(0, 200000)));
        ASSERT_TRUE(waitUntil([&] {
            trader->trade();
            return isGone();
        }));
        ASSERT_EQ(module().exitStatus(), QProcess::CrashExit)
            << module().readAllStandardError().toStdString();
        trader->forgetOpenQuestions();
    }

    /// Every order that was confirmed is there, as it was asked for, and none that nobody asked for.
    void expectOrdersOf(const BusyTrader &trader)
    {
        QHash<qint64, Order> orders;
        const Orders ofToday = OrderBook(&ledger()).ofDay(TradingDate::today());
        for (const Order &order : ofToday) {
            orders.insert(order.number, order);
        }
        EXPECT_LE(orders.size(), trader.asked().size());
        for (auto asked = trader.acknowledged().cbegin(); asked != trader.acknowledged().cend(); ++asked) {
            const auto found = orders.constFind(asked.key());
            ASSERT_NE(found, orders.constEnd()) << "order " << asked.key() << " is lost";
            const Order &order = *found;
            EXPECT_EQ(order.security, asked->security);
            EXPECT_EQ(order.direction, asked->direction);
            EXPECT_EQ(order.price, Money::ofYuan(asked->cents / 100.0));
            EXPECT_EQ(order.quantity, asked->quantity);
        }
    }

    /// What was said of cancellations and endings is what became of the orders.
    void expectWordsKept(const BusyTrader &trader)
    {
        const QString finals = QStringLiteral("5689");
        const Orders ofToday = OrderBook(&ledger()).ofDay(TradingDate::today());
        for (const Order &order : ofToday) {
            const QString told = trader.told().value(order.number);
            if (!told.isEmpty() && finals.contains(told)) {
                EXPECT_EQ(order.status, told) << order.number;
            }
            if (trader.cancelled().contains(order.number)) {
                EXPECT_TRUE(order.status == QLatin1String("5") || order.status == QLatin1String("6"))
                    << order.number << " was cancelled and is " << order.status.toStdString();
            }
        }
    }

    const Money m_openingCash = Money::ofYuan(1e8).value();
};

} // namespace

TEST_F(KilledModule, KeepsEveryWordAndItsLedgerAddsUp)
{
    const unsigned seed = numberOf("TRADE_KILL_SEED", std::random_device()());
    const unsigned kills = numberOf("TRADE_KILLS", 25);
    SCOPED_TRACE("TRADE_KILL_SEED=" + std::to_string(seed));
    BusyTrader trader(&chart(), seed);
    QElapsedTimer clock;
    clock.start();

    for (unsigned kill = 1; kill <= kills; ++kill) {
        ASSERT_NO_FATAL_FAILURE(liveAndDie(&trader));
        ASSERT_THAT(audit(&ledger(), m_openingCash), IsEmpty()) << "after kill " << kill;
    }
    serve(); // confirms the cancellations
    ASSERT_TRUE(waitUntil([this] {
        const Orders open = OrderBook(&ledger()).open();
        return std::none_of(open.begin(), open.end(), [](const Order &order) {
            return order.status == QLatin1String("3") || order.status == QLatin1String("4");
        });
    }));
    trader.hear();

    EXPECT_THAT(audit(&ledger(), m_openingCash), IsEmpty());
    expectOrdersOf(trader);
    expectWordsKept(trader);
    EXPECT_GT(trader.acknowledged().size(), 0);
    EXPECT_GT(trader.cancelled().size(), 0);
    std::cout << "TRADE_KILL_SEED=" << seed << ": " << kills << " kills in " << clock.elapsed() << " ms, "
              << trader.acknowledged().size() << " orders confirmed, " << trader.cancelled().size()
              << " cancelled, " << ledger().trades({TradingDate::today(), TradingDate::today()}).size()
              << " executions" << std::endl;
}

} // namespace TradeModule
