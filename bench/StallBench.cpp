// How long the window stands still: the longest turn of its event loop in each thing that a user can do, with
// 100,000 bars, 50,000 trades and 10,000 orders on a real bus. Every action of the window and every shortcut
// is found and done, so that one that comes later is timed, too.
//
// The middle of five times counts, in processor time of the thread of the window: the other programs of a
// busy machine are not the window's.
#include "bench/support/BusyAccount.h"
#include "bench/support/Turns.h"
#include "endpoint/LocalBroker.h"
#include "terminal/Appearance.h"
#include "terminal/TerminalProgram.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/plugin/OverlayHost.h"
#include "terminal/trade/TradeDocks.h"
#include "terminal/ui/MainWindow.h"
#include "trading/ExchangeTime.h"

#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLoggingCategory>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSet>
#include <QShortcut>
#include <QTabBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

using namespace Terminal;
using Clock = std::chrono::steady_clock;
using Milliseconds = Turns::Milliseconds;

constexpr int repeats = 5;
constexpr std::chrono::milliseconds patience{20'000};
constexpr std::chrono::milliseconds dialogLooksAfter{20};
constexpr Milliseconds mostOfInput{16};
constexpr Milliseconds mostOfAnythingElse{50};

/// The event loop as in a window that nobody touches: it sleeps between events.
void idle(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

bool waitFor(const std::function<bool()> &condition)
{
    const auto end = Clock::now() + patience;
    while (!condition() && Clock::now() < end) {
        idle(std::chrono::milliseconds(2));
    }
    return condition();
}

/// Closes what a user would have to close: dialogs, questions and menus. They are part of the action.
class Closer
{
public:
    Closer()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [] {
            if (QWidget *const popup = QApplication::activePopupWidget()) {
                popup->close();
            } else if (auto *const dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
                dialog->reject();
            }
        });
        m_timer.start(dialogLooksAfter);
    }

private:
    QTimer m_timer;
};

/// The middle of some times.
Milliseconds middleOf(std::vector<Milliseconds> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

/// What was done, and the longest turn that it took in each of the times.
struct Row
{
    QString name;
    std::vector<Milliseconds> turns;
    Milliseconds bound = mostOfInput;

    bool isOver() const { return middleOf(turns) > bound; }
};

/// A user who does everything that can be done in a window.
class User
{
public:
    /// Only what has these words in its name is timed.
    User(MainWindow *window, QString words) : m_window(window), m_words(std::move(words)) {}

    void doAll()
    {
        watchTheAnswers();
        useTheChart("days");
        openTheLists();
        doEachAction();
        pressEachShortcut();
        useTheTicket();
        useTheBars();
        useTheLists();
        replaceTheTrades();
        takeNewBars();
        rest();
        if (!m_afterwards.turns.empty()) {
            m_rows.push_back(m_afterwards);
        }
    }

    /// Returns how many are over their bounds.
    int tell() const
    {
        std::printf("| what | longest turn, middle of %d | longest of all | bound |\n|---|---|---|---|\n",
                    repeats);
        for (const Row &row : m_rows) {
            std::printf("| %s | %.1f ms%s | %.1f ms | %.0f ms |\n", qUtf8Printable(row.name),
                        middleOf(row.turns).count(), row.isOver() ? " **over**" : "",
                        std::max_element(row.turns.begin(), row.turns.end())->count(), row.bound.count());
        }
        return static_cast<int>(
            std::count_if(m_rows.begin(), m_rows.end(), [](const Row &row) { return row.isOver(); }));
    }

private:
    /// First the answer to the input with its repaint, then what it brings: answers to questions, and lists
    /// that are filled.
    /// False when it was not to be timed.
    bool time(const QString &name, const std::function<void()> &act)
    {
        if (!name.contains(m_words)) {
            return false;
        }
        Row input{name, {}};
        for (int i = 0; i < repeats; ++i) {
            m_turns.settle();
            m_turns.forget();
            act();
            QApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
            input.turns.push_back(m_turns.longest());
            m_turns.forget();
            m_turns.settle();
            m_afterwards.turns.push_back(m_turns.longest());
        }
        std::fprintf(stderr, "%-60s %6.1f ms, afterwards %6.1f ms\n", qUtf8Printable(name),
                     middleOf(input.turns).count(), m_turns.longest().count());
        m_rows.push_back(input);
        return true;
    }

    QWidget *canvas() const { return m_window->chart()->canvas(); }

    void watchTheAnswers()
    {
        waitFor([this] { return m_window->overlays() != nullptr; });
        showAllDays();
        m_window->overlays()->renewPastTrades(BusyAccount::code(0));
        m_turns.settle();
        m_turns.forget();
        waitFor([this] { return countOfTrades() == BusyAccount::tradeCount; });
        m_rows.push_back(
            {QStringLiteral("a long answer of trades"), {m_turns.longest()}, mostOfAnythingElse});
    }

    int countOfTrades() const
    {
        const DrawnMarks *const marks =
            m_window->overlays() == nullptr
                ? nullptr
                : m_window->overlays()->drawnMarks(*findOverlayKind(QStringLiteral("trades")));
        int count = 0;
        if (marks != nullptr) {
            for (const DrawnMark &mark : marks->all()) {
                count += mark.count;
            }
        }
        return count;
    }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QKeyEvent down(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(m_window->chart(), &down);
    }

    void move(QEvent::Type type, const QPointF &place, Qt::MouseButtons buttons) const
    {
        QMouseEvent event(type, place, canvas()->mapToGlobal(place.toPoint()),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(canvas(), &event);
    }

    void wheel(int steps) const
    {
        const QPointF middle = canvas()->rect().center();
        QWheelEvent event(middle, canvas()->mapToGlobal(middle.toPoint()), QPoint(), QPoint(0, 120 * steps),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(canvas(), &event);
    }

    /// Once with all bars in view and once with the last ones.
    void useTheChart(const char *what)
    {
        struct View
        {
            const char *name;
            void (ChartView::*show)();
        };
        for (const View view :
             {View{"all bars", &ChartView::showAll}, View{"a recent view", &ChartView::showRecent}}) {
            const QString of = QStringLiteral(", %1, %2").arg(QLatin1String(what), QLatin1String(view.name));
            const auto show = [this, view] { (m_window->chart()->*view.show)(); };
            show();
            useKeys(of, show);
            useThePointer(of, show);
        }
    }

    void useKeys(const QString &of, const std::function<void()> &show)
    {
        constexpr std::pair<const char *, int> keys[] = {
            {"Left", Qt::Key_Left},     {"Right", Qt::Key_Right},       {"Up", Qt::Key_Up},
            {"Down", Qt::Key_Down},     {"Home", Qt::Key_Home},         {"End", Qt::Key_End},
            {"PageUp", Qt::Key_PageUp}, {"PageDown", Qt::Key_PageDown}, {"N", Qt::Key_N},
            {"P", Qt::Key_P},           {"Return", Qt::Key_Return},     {"Escape", Qt::Key_Escape},
        };
        for (const auto &[name, key] : keys) {
            time(QStringLiteral("key %1").arg(QLatin1String(name)) + of, [this, key = key] { press(key); });
        }
        show();
    }

    void useThePointer(const QString &of, const std::function<void()> &show)
    {
        int step = 0;
        time(QStringLiteral("wheel in") + of, [this] { wheel(1); });
        time(QStringLiteral("wheel out") + of, [this] { wheel(-1); });
        show();
        const auto place = [&step] {
            ++step;
            return QPointF(100 + step * 97 % 1000, 100 + step * 41 % 300);
        };
        time(QStringLiteral("crosshair") + of, [&] { move(QEvent::MouseMove, place(), Qt::NoButton); });
        time(QStringLiteral("click") + of, [&] {
            const QPointF at = place();
            move(QEvent::MouseButtonPress, at, Qt::LeftButton);
            move(QEvent::MouseButtonRelease, at, Qt::NoButton);
        });
        move(QEvent::MouseButtonPress, QPointF(300, 20), Qt::LeftButton);
        time(QStringLiteral("drag") + of, [&] { move(QEvent::MouseMove, place(), Qt::LeftButton); });
        move(QEvent::MouseButtonRelease, QPointF(300, 20), Qt::NoButton);
        show();
    }

    void openTheLists()
    {
        m_window->trade()->setShown(true);
        m_turns.settle();
    }

    /// Every action of every menu and bar; those that can be on are put back.
    void doEachAction()
    {
        QSet<QString> done;
        for (QAction *const action : m_window->findChildren<QAction *>()) {
            const QString name = action->text().remove(QLatin1Char('&'));
            if (name.isEmpty() || action->isSeparator() || action->menu() != nullptr || done.contains(name)) {
                continue;
            }
            done.insert(name);
            const bool timed =
                time(QStringLiteral("action \"%1\"").arg(name), [action] { action->trigger(); });
            if (timed && action->isCheckable() && action->actionGroup() == nullptr) {
                action->trigger(); // five times is once
                m_turns.settle();
            }
        }
        showAllDays();
    }

    /// More bars than a file may have.
    void showAllDays()
    {
        m_window->load(BusyAccount::code(0), ChartPeriod::Day);
        ChartData many = m_window->chart()->data();
        many.bars = BusyAccount::allDays();
        m_window->chart()->setData(many);
        m_window->chart()->showAll();
        waitFor([this] { return countOfTrades() == BusyAccount::tradeCount; });
        m_turns.settle();
    }

    void pressEachShortcut()
    {
        for (QShortcut *const shortcut : m_window->findChildren<QShortcut *>()) {
            time(QStringLiteral("shortcut %1").arg(shortcut->key().toString()),
                 [shortcut] { QMetaObject::invokeMethod(shortcut, "activated"); });
        }
    }

    void useTheTicket()
    {
        m_window->trade()->openTicket(Direction::Buy);
        for (QAbstractSpinBox *const box : m_window->findChildren<QAbstractSpinBox *>()) {
            if (box->isVisible()) {
                time(QStringLiteral("ticket: a step of %1").arg(box->accessibleName()),
                     [box] { box->stepUp(); });
            }
        }
    }

    void useTheBars()
    {
        for (const ChartPeriod period :
             {ChartPeriod::Week, ChartPeriod::Month, ChartPeriod::Minute, ChartPeriod::Day}) {
            time(QStringLiteral("period %1").arg(periodWord(period)),
                 [this, period] { m_window->load(BusyAccount::code(0), period); });
        }
        int number = 0;
        time(QStringLiteral("security"),
             [this, &number] { m_window->load(BusyAccount::code(++number % 2), ChartPeriod::Day); });
        m_window->load(BusyAccount::code(0), ChartPeriod::Minute);
        m_turns.settle();
        useTheChart("minutes with 10,000 orders");
        showAllDays();
    }

    void useTheLists()
    {
        for (QTabBar *const tabs : m_window->findChildren<QTabBar *>()) {
            for (int tab = 0; tabs->isVisible() && tab < tabs->count(); ++tab) {
                time(QStringLiteral("tab \"%1\"").arg(tabs->tabText(tab)), [tabs, tab] {
                    tabs->setCurrentIndex((tab + 1) % tabs->count());
                    tabs->setCurrentIndex(tab);
                });
            }
        }
        for (QTableView *const list : m_window->findChildren<QTableView *>()) {
            if (list->isVisible()) {
                time(QStringLiteral("scrolling %1").arg(list->accessibleName()), [list] {
                    list->verticalScrollBar()->setValue((list->verticalScrollBar()->value() + 977) %
                                                        std::max(1, list->verticalScrollBar()->maximum()));
                });
                time(QStringLiteral("sorting %1").arg(list->accessibleName()),
                     [list] { list->sortByColumn(1, Qt::AscendingOrder); });
            }
        }
    }

    /// From the question to the painted marks; what the window works on it in all its turns.
    void replaceTheTrades()
    {
        Row row{QStringLiteral("50,000 marks replaced, from the answer's bytes to the picture, all turns"),
                {},
                Milliseconds(25)};
        m_window->chart()->showAll();
        for (int i = 0; i < repeats; ++i) {
            m_turns.settle();
            m_window->overlays()->renewPastTrades(BusyAccount::code(0));
            QApplication::processEvents();
            Milliseconds work{0};
            m_turns.workUntil([this] { return countOfTrades() == BusyAccount::tradeCount; }, &work);
            row.turns.push_back(work);
        }
        m_rows.push_back(row);
    }

    void takeNewBars()
    {
        Bar bar = m_window->chart()->data().bars.back();
        m_window->chart()->showAll();
        time(QStringLiteral("a new bar, all overlays"), [this, &bar] {
            bar.date = Trading::TradingDate::ofNumber(bar.date).value().plusDays(1).number();
            m_window->chart()->grow(m_window->chart()->data().bars.size(), Bars{bar});
        });
    }

    void rest()
    {
        m_turns.forget();
        idle(std::chrono::seconds(7));
        m_rows.push_back(
            {QStringLiteral("seven seconds of nothing"), {m_turns.longest()}, mostOfAnythingElse});
    }

    MainWindow *m_window;
    const QString m_words;
    Turns m_turns;
    Closer m_closer;
    std::vector<Row> m_rows;
    Row m_afterwards{QStringLiteral("answers and lists after all of these"), {}, mostOfAnythingElse};
};

QStringList wordsOf(const BusyAccount &account)
{
    return {QStringLiteral("tradeterminal"),
            QStringLiteral("--data"),
            account.folder(),
            QStringLiteral("--plugin"),
            QStringLiteral(PLUGIN_FILE),
            QStringLiteral("--code"),
            BusyAccount::code(0),
            QStringLiteral("--overlays"),
            QStringLiteral("cost,trades,orders,combined-cost"),
            QStringLiteral("--size"),
            QStringLiteral("1600x900"),
            QStringLiteral("--no-broker"),
            QStringLiteral("--lang"),
            QStringLiteral("en")};
}

MainWindow *theWindow()
{
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        if (auto *const window = qobject_cast<MainWindow *>(widget)) {
            return window;
        }
    }
    return nullptr;
}

int measure(const QString &bus, const QString &words)
{
    LocalCommunication::LocalBroker broker;
    broker.start(bus);
    if (!waitFor([&broker] { return broker.state() == LocalCommunication::LocalBroker::State::Running; })) {
        return EXIT_FAILURE;
    }
    BusyAccount account;
    account.answerOn(bus);
    const auto parsed = parseOptions(wordsOf(account), QStringLiteral("/nowhere/bin"));
    TerminalProgram program(parsed.value().options, bus);
    int over = 0;
    QTimer::singleShot(0, [&over, words] {
        User user(theWindow(), words);
        user.doAll();
        over = user.tell();
        QApplication::quit();
    });
    return program.run() == 0 && over == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argc, char *argv[])
{
    if (!Trading::enterExchangeTime()) {
        return EXIT_FAILURE;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir home; // settings of its own
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    qputenv("TRADEBUS_INSTANCE", "stall_bench " + QByteArray::number(::getpid())); // a bus of its own
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("stall_bench"));
    setAppearance(&application);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    return measure(QApplication::applicationDirPath(), QString::fromLocal8Bit(argc > 1 ? argv[1] : ""));
}
