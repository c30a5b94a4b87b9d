// How long the window stands still: the longest turn of its event loop, and the longest answer to a key, the
// wheel, a drag and the pointer, while much comes, a trading module hangs and the bus goes away. Of a turn
// the processor time of this thread counts: the other programs of a busy machine are not the window's. A wait
// that costs none, for an answer or a lock, shows in the time by the clock, whose bound is wider; with what a
// long day brings it is as narrow, without the time in line for a processor, and asks for a quiet machine, or
// for one that serves this program first: chrt -r 5.
//
//     TERMINAL_STALLS=full terminal_trades_test --gtest_filter='StallsProgram.*'      as much as a long day
//     brings
#include "endpoint/LocalBroker.h"
#include "terminal/TerminalProgram.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/ui/MainWindow.h"
#include "tests/support/BusThread.h"
#include "tests/support/SentAnswer.h"
#include "tests/support/SentOrder.h"
#include "tests/support/SentTrade.h"
#include "tests/support/TurnWatch.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/support/SettingsFixture.h"

#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QKeyEvent>
#include <QLoggingCategory>
#include <QMouseEvent>
#include <QSet>
#include <QWheelEvent>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <utility>

namespace Terminal {

using namespace std::chrono_literals;
using LocalCommunication::EndPoint;
using LocalCommunication::LocalBroker;

namespace {

/// Milliseconds that a question waits for a module that does not answer, once.
constexpr double firstTimeOut = 3000;

/// What a user notices, and what he notices of an answer to what he does.
constexpr double mostUnnoticed = 50;
constexpr double mostOfInput = 16;

/// More than is waited for a module that is doubted: the answer was waited for.
constexpr double leastWait = 10;

/// More than a crowded machine makes of a wait of five milliseconds: this one was meant.
constexpr double leastMeant = 500;

/// Milliseconds that this thread has stood in line for a processor; 0 where the machine does not tell.
double timeInLine()
{
    QFile file(QStringLiteral("/proc/thread-self/schedstat"));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    const QList<QByteArray> ran = file.readAll().split(' '); // its time, that in line, and how often
    return ran.size() < 2 ? 0 : ran[1].toDouble() * 1e-6;
}

/// In milliseconds.
struct Moment
{
    static Moment now()
    {
        const auto clock = std::chrono::steady_clock::now().time_since_epoch();
        return {TurnWatch::threadTime(), std::chrono::duration<double, std::milli>(clock).count(),
                timeInLine()};
    }

    double processor;
    double clock;
    double inLine;
};

/// Between two moments, in milliseconds.
struct Turn
{
    Turn() = default;
    Turn(const Moment &from, const Moment &to)
        : processor(to.processor - from.processor),
          clock(to.clock - from.clock),
          still(clock - (to.inLine - from.inLine))
    {
    }

    double waited() const { return still - processor; }

    double processor = 0;
    double clock = 0;
    double still = 0; ///< by the clock, without the time in line
};

/// The longest of many turns, by each measure; the one with the longest wait, for an answer or a lock, apart.
struct Longest
{
    void take(const Moment &from, const Moment &to)
    {
        Turn turn(from, to);
        longStands += turn.waited() > leastMeant ? 1 : 0;
        stands += turn.still > mostUnnoticed ? 1 : 0;
        if (turn.waited() > wait.waited()) {
            std::swap(turn, wait);
        }
        other.processor = std::max(other.processor, turn.processor);
        other.clock = std::max(other.clock, turn.clock);
        other.still = std::max(other.still, turn.still);
    }

    /// With the wait among the others.
    Turn all() const
    {
        Turn all;
        all.processor = std::max(other.processor, wait.processor);
        all.clock = std::max(other.clock, wait.clock);
        all.still = std::max(other.still, wait.still);
        return all;
    }

    Turn wait;
    Turn other;
    int stands = 0; ///< turns that a user notices
    int longStands = 0;
};

struct Load
{
    int bars;
    int orders;
    int trades;
    int notifications;
};

bool isFull()
{
    return qEnvironmentVariable("TERMINAL_STALLS") == QLatin1String("full");
}

/// What a user is promised, where it can be held: built for users, and with what a long day brings.
bool isStrict()
{
#ifdef NDEBUG
    return isFull();
#else
    return false;
#endif
}

Load load()
{
    return isFull() ? Load{50000, 10000, 10000, 100000} : Load{7000, 500, 500, 300};
}

/// The turns of the event loop, and what lies between two of them by the clock.
class Watch
{
public:
    Watch()
    {
        QObject::connect(&m_heartbeat, &QTimer::timeout, [this] {
            const Moment now = Moment::now();
            m_longest.take(std::exchange(m_last, now), now);
        });
        m_heartbeat.start(0);
    }

    Longest longest() const { return m_longest; }

private:
    QTimer m_heartbeat;
    Moment m_last = Moment::now();
    Longest m_longest;
};

QByteArray compact(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QByteArray compact(const QJsonArray &rows)
{
    return QJsonDocument(rows).toJson(QJsonDocument::Compact);
}

/// Asks for the end of a flood once more: a broker whose memory is full throws out who sends, and with him
/// the end that he sent.
constexpr char onlyTheEnd[] = "again";

/// In the place of a price that is another one in each answer.
constexpr char changing[] = "10.7777";

/// The rows of an answer, written once: a module that took longer to write them would spare the window. The
/// last one changes.
QByteArray tradeRows(int count)
{
    QJsonArray rows;
    for (int i = 0; i < count; ++i) {
        SentTrade trade;
        trade.side = i % 2 == 0 ? "B" : "S";
        trade.date = QDate(2024, 1, 1).addDays(i % 500).toString(QStringLiteral("yyyyMMdd")).toLatin1();
        trade.price = i == count - 1 ? changing : trade.price;
        rows.append(trade.whole());
    }
    return compact(rows);
}

QByteArray orderRows(int count)
{
    QJsonArray rows;
    for (int i = 0; i < count; ++i) {
        SentOrder order;
        order.number = QByteArray::number(700001 + i);
        order.price = i == count - 1 ? changing : order.price;
        rows.append(QJsonObject(order));
    }
    return compact(rows);
}

/// A trading module in a thread of its own, which may hang.
class Module
{
public:
    explicit Module(const QString &bus)
        : m_trades(tradeRows(load().trades)),
          m_orders(orderRows(load().orders)),
          m_answers(bus, "TradeQuery",
                    [this](EndPoint &own, const QByteArray &payload, const QByteArray &replyChannel) {
                        answer(own, payload, replyChannel);
                    }),
          m_notifier(bus, "Begin", [](EndPoint &own, const QByteArray &payload, const QByteArray &) {
              for (int i = 0; i < load().notifications && payload != onlyTheEnd; ++i) {
                  own.sendMessage("Global", "TradeNotify",
                                  R"({"stkcode":"600519","market":"1","ordersno":"1"})");
              }
              own.sendMessage("Global", "End", "{}");
          })
    {
    }

    void hang(bool hangs) { m_hangs = hangs; }

private:
    void answer(EndPoint &own, const QByteArray &payload, const QByteArray &replyChannel)
    {
        if (m_hangs) {
            return;
        }
        QJsonObject answer = QJsonDocument::fromJson(payload).object();
        const QString command = answer[QStringLiteral("cmd")].toString();
        answer[QStringLiteral("success")] = true;
        answer[QStringLiteral("market")] = QStringLiteral("1");
        const QByteArray screen = answer[QStringLiteral("screenId")].toString().toUtf8();
        QByteArray text = compact(answer);
        text.chop(1);
        own.sendMessage(screen.isEmpty() ? replyChannel : screen, "TradeQuery",
                        text + ",\"data\":" + dataOf(command) + '}');
    }

    QByteArray dataOf(const QString &command)
    {
        if (command == QLatin1String("HolderCostPrice")) {
            return R"({"stkcode":"600519","market":"1","costprice":"100.5"})";
        }
        QByteArray rows = command == QLatin1String("EntrustTodayTrade") ? m_orders : m_trades;
        return rows.replace(rows.lastIndexOf(changing), sizeof changing - 1,
                            "10." + QByteArray::number(1000 + ++m_answerCount % 1000));
    }

    const QByteArray m_trades;
    const QByteArray m_orders;
    std::atomic<bool> m_hangs{false};
    int m_answerCount = 0; ///< in the thread that answers
    BusThread m_answers;
    BusThread m_notifier;
};

class StallsProgram : public Settings
{
protected:
    static QString address() { return QApplication::applicationDirPath(); }

    void SetUp() override
    {
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false")); // as the terminal does
        QDir(m_data.path()).mkpath(QStringLiteral("daily"));
        QFile::copy(QStringLiteral(TRADECHART_EXAMPLES "/securities.csv"),
                    m_data.filePath(QStringLiteral("securities.csv")));
        QFile bars(m_data.filePath(QStringLiteral("daily/600519.csv")));
        ASSERT_TRUE(bars.open(QIODevice::WriteOnly));
        bars.write("date,open,high,low,close,volume\n");
        QDate day = QDate(2026, 1, 1).addDays(-load().bars * 7 / 5 + (isFull() ? 25000 : 0));
        for (int i = 0; i < load().bars; ++i, day = day.addDays(day.dayOfWeek() == Qt::Friday ? 3 : 1)) {
            day = day.dayOfWeek() > Qt::Friday ? day.addDays(2) : day;
            const double price = 100 + i * 7919 % 1000 / 100.0;
            bars.write(QStringLiteral("%1,%2,%3,%4,%2,%5\n")
                           .arg(day.toString(QStringLiteral("yyyyMMdd")))
                           .arg(price, 0, 'f', 2)
                           .arg(price + 1, 0, 'f', 2)
                           .arg(price - 1, 0, 'f', 2)
                           .arg(1000000 + i)
                           .toLatin1());
        }
        m_broker.start(address());
        ASSERT_TRUE(waitUntil([this] { return m_broker.state() == LocalBroker::State::Running; }));
    }

    void run(const std::function<void()> &story)
    {
        const auto parsed =
            parseOptions({QStringLiteral("tradeterminal"), QStringLiteral("--data"), m_data.path(),
                          QStringLiteral("--plugin"), QStringLiteral(PLUGIN_FILE), QStringLiteral("--code"),
                          QStringLiteral("600519"), QStringLiteral("--overlays"),
                          QStringLiteral("cost,trades,orders,combined-cost"), QStringLiteral("--size"),
                          QStringLiteral("1600x900"), QStringLiteral("--no-broker")},
                         QStringLiteral("/nowhere/bin"));
        ASSERT_TRUE(parsed) << qPrintable(parsed.error());
        TerminalProgram program(parsed.value().options, address());
        QTimer::singleShot(0, qApp, [this, &story] {
            for (QWidget *const widget : QApplication::topLevelWidgets()) {
                auto *const window = qobject_cast<MainWindow *>(widget);
                m_window = window != nullptr ? window : m_window;
            }
            QObject::connect(
                m_window->answers(), &ScreenAnswers::answered, m_window,
                [this](const Trading::CheckedAnswer &answer) { m_answered.insert(answer.command); });
            story();
            m_window->close();
        });
        EXPECT_EQ(program.run(), 0);
    }

    void TearDown() override { QLoggingCategory::setFilterRules(QString()); }

    QWidget *canvas() const { return m_window->chart(); }

    void send(QEvent *event) const { QApplication::sendEvent(canvas(), event); }

    void press(Qt::Key key) const
    {
        QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier);
        send(&down);
    }

    void wheel(int steps) const
    {
        const QPointF middle = canvas()->rect().center();
        QWheelEvent event(middle, canvas()->mapToGlobal(middle.toPoint()), QPoint(), QPoint(0, 120 * steps),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        send(&event);
    }

    void move(QEvent::Type type, const QPointF &place, Qt::MouseButtons buttons) const
    {
        QMouseEvent event(type, place, canvas()->mapToGlobal(place.toPoint()),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, buttons, Qt::NoModifier);
        send(&event);
    }

    /// Of the event loop, as the program runs it: one that may wait tells of its turns.
    static void runATurn()
    {
        QAbstractEventDispatcher::instance()->wakeUp();
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    /// What the user does in turn, each with its repaint: the slowest answer.
    Longest actAndWatch(const char *what, int times, const std::function<void(int)> &act) const
    {
        Longest longest;
        for (int i = 0; i < times; ++i) {
            const Moment before = Moment::now();
            act(i);
            runATurn();
            longest.take(before, Moment::now());
        }
        tell(what, longest);
        return longest;
    }

    static void tell(const char *what, Longest longest)
    {
        std::printf("%-38s longest wait %7.2f ms of the processor, %7.2f by the clock; others %6.2f, %6.2f, "
                    "not in line %6.2f; %d stands\n",
                    what, longest.wait.processor, longest.wait.clock, longest.other.processor,
                    longest.other.clock, longest.other.still, longest.stands);
        std::fflush(stdout);
    }

    /// Wide where it is built for debugging.
    static void expectInput(Longest longest)
    {
        EXPECT_LT(longest.all().processor, isStrict() ? mostOfInput : 250);
        EXPECT_EQ(longest.longStands, 0) << "somebody was waited for while the user does something";
        if (isStrict()) {
            EXPECT_LT(longest.all().still, mostOfInput);
        }
    }

    /// One wait for an answer may take as long as a time-out; what comes in is read in it.
    static void expectTurn(Longest longest)
    {
        const bool isForAnAnswer = longest.wait.waited() > leastWait;
        const double ofProcessor = isForAnAnswer ? longest.other.processor : longest.all().processor;
        EXPECT_LT(ofProcessor, isStrict() ? mostUnnoticed : 500);
        EXPECT_LT(longest.all().clock, firstTimeOut + 1000) << "somebody was waited for, again and again";
        EXPECT_LE(longest.longStands, 1) << "somebody was waited for again after the first time-out";
        if (isStrict()) {
            EXPECT_LT(longest.all().still, firstTimeOut + mostUnnoticed);
            EXPECT_LE(longest.stands, 1) << "the window stood still again after the first wait";
        }
    }

    void useTheWindow(const char *when) const
    {
        std::printf("%s:\n", when);
        const QPointF middle = canvas()->rect().center();
        expectInput(actAndWatch("  wheel", 60, [this](int i) { wheel(i % 20 < 10 ? -1 : 1); }));
        expectInput(actAndWatch("  keys", 60, [this](int i) {
            constexpr Qt::Key keys[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Down,
                                        Qt::Key_Up,   Qt::Key_Home,  Qt::Key_End};
            press(keys[i % 6]);
        }));
        move(QEvent::MouseButtonPress, middle, Qt::LeftButton);
        expectInput(actAndWatch("  drag", 60, [this, middle](int i) {
            move(QEvent::MouseMove, middle + QPointF(i * 5, 0), Qt::LeftButton);
        }));
        move(QEvent::MouseButtonRelease, middle, Qt::NoButton);
        expectInput(actAndWatch("  hover", 120, [this](int i) {
            move(QEvent::MouseMove, QPointF(20 + i * 10, 100 + i), Qt::NoButton);
        }));
    }

    /// What comes in meanwhile, to its end.
    Longest watchUntil(const char *what, const std::function<bool()> &isOver) const
    {
        const Watch watch;
        EXPECT_TRUE(waitUntil(isOver, 120s)) << what;
        tell(what, watch.longest());
        expectTurn(watch.longest());
        return watch.longest();
    }

    bool isAnswered(const char *command) const { return m_answered.contains(QLatin1String(command)); }

    MainWindow *m_window = nullptr;
    LocalBroker m_broker;

private:
    QTemporaryDir m_data;
    QSet<QString> m_answered;
};

TEST_F(StallsProgram, AreShortWhateverComesIn)
{
    Module module(address());
    EndPoint other(nullptr);
    bool hasEnded = false;
    QObject::connect(&other, &EndPoint::messageReceived, &other, [&hasEnded] { hasEnded = true; });
    other.subscribe("Global", QByteArray("End"));
    other.connect(address());
    ASSERT_TRUE(waitUntil([&other] { return other.isConnected(); }));
    const auto flood = [&](const char *what) {
        hasEnded = false;
        other.sendMessage("Global", "Begin", "{}");
        QTimer asking;
        QObject::connect(&asking, &QTimer::timeout,
                         [&other] { other.sendMessage("Global", "Begin", onlyTheEnd); });
        asking.start(5s);
        watchUntil(what, [&hasEnded] { return hasEnded; });
    };

    run([&] {
        watchUntil("answers to the first questions",
                   [this] { return isAnswered("HistoryTrade") && isAnswered("HolderCostPrice"); });
        useTheWindow("with all answers there");
        flood("notifications");
        useTheWindow("after the notifications");

        module.hang(true);
        flood("notifications while the module hangs");
        useTheWindow("while the module hangs");
        module.hang(false);

        m_broker.stop();
        watchUntil("the bus goes away", [this] { return m_broker.state() != LocalBroker::State::Running; });
        useTheWindow("without a bus");
        m_broker.start(address());
        watchUntil("the bus comes back", [&other] { return other.isConnected(); });
    });
}

} // namespace

} // namespace Terminal
