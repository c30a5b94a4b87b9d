// What a live day costs: from a quote on the bus to the drawn bar, and the longest turn of the event loop
// while the whole market is told. In a window with 100,000 bars and the overlays of the factory, on a real
// broker.
#include "endpoint/EndPoint.h"
#include "endpoint/LocalBroker.h"
#include "terminal/Appearance.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/live/BarQuote.h"
#include "terminal/plugin/OverlayLibrary.h"
#include "terminal/session/TradingSession.h"
#include "terminal/ui/MainWindow.h"
#include "trading/ExchangeTime.h"
#include "trading/ModuleVocabulary.h"

#include <QApplication>
#include <QDate>
#include <QDir>
#include <QEvent>
#include <QEventLoop>
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <unistd.h>
#include <utility>

namespace {

using namespace Terminal;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int dayCount = 100'000;
constexpr int securityCount = 500;
constexpr int quotesPerSecond = 1000;
constexpr int samples = 200;
constexpr std::chrono::milliseconds patience{10'000};

Milliseconds processorTime()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return std::chrono::duration<double, std::milli>(static_cast<double>(now.tv_sec) * 1e3 +
                                                     static_cast<double>(now.tv_nsec) / 1e6);
}

QString codeOf(int number)
{
    return QString::number(600000 + number);
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(content);
}

/// The names of the securities, and a day of the one that is shown: more days than a file may have are made
/// here.
void writeFolder(const QString &folder)
{
    QByteArray names("code,market,name\n");
    for (int number = 0; number < securityCount; ++number) {
        names += codeOf(number).toLatin1() + ",SH,S\n";
    }
    QDir(folder).mkpath(QStringLiteral("daily"));
    write(folder + QStringLiteral("/securities.csv"), names);
    write(folder + QStringLiteral("/daily/600000.csv"),
          "date,open,high,low,close,volume\n20240102,10,10,10,10,100\n");
}

/// Up to yesterday.
Bars manyDays()
{
    Bars days;
    QDate date = QDate::currentDate().addDays(-dayCount);
    for (int number = 0; number < dayCount; ++number) {
        const double price = 10 + std::sin(number / 50.0);
        days.push_back({date.year() * 10000 + date.month() * 100 + date.day(), 0, price, price + 0.1,
                        price - 0.1, price, 1e5});
        date = date.addDays(1);
    }
    return days;
}

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
        idle(std::chrono::milliseconds(1));
    }
    return condition();
}

/// The longest turn of the event loop, by the clock and in processor time: on a crowded machine others have
/// theirs.
class Turns
{
public:
    Turns()
    {
        QObject::connect(&m_heartbeat, &QTimer::timeout, &m_heartbeat, [this] { beat(); });
        m_heartbeat.start(0);
    }
    double longest() const { return m_longest.count(); }
    double longestWork() const { return m_longestWork.count(); }

private:
    void beat()
    {
        const auto now = Clock::now();
        const Milliseconds work = processorTime();
        m_longest = std::max<Milliseconds>(m_longest, now - std::exchange(m_last, now));
        m_longestWork = std::max(m_longestWork, work - std::exchange(m_lastWork, work));
    }

    QTimer m_heartbeat;
    Clock::time_point m_last = Clock::now();
    Milliseconds m_lastWork = processorTime();
    Milliseconds m_longest{0};
    Milliseconds m_longestWork{0};
};

/// Tells when the chart has painted a last bar that closes at the awaited price.
class Painted : public QObject
{
public:
    explicit Painted(ChartView *chart) : m_chart(chart) { chart->canvas()->installEventFilter(this); }

    void await(double close)
    {
        m_close = close;
        m_at.reset();
    }
    std::optional<Clock::time_point> at() const { return m_at; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && !m_at && m_chart->data().bars.back().close == m_close) {
            watched->removeEventFilter(this);
            QApplication::sendEvent(watched, event);
            watched->installEventFilter(this);
            m_at = Clock::now();
            return true;
        }
        return false;
    }

private:
    ChartView *m_chart;
    double m_close = 0;
    std::optional<Clock::time_point> m_at;
};

/// The window on a day of the market.
class LiveWindow
{
public:
    explicit LiveWindow(ChartPeriod period)
        : m_session(DataFolder::open(m_folder.path()).value(), {}, QApplication::applicationDirPath()),
          m_window(&m_session, optionsOf(period))
    {
    }

    bool open(ChartPeriod period)
    {
        m_broker.start(QApplication::applicationDirPath());
        m_session.join();
        m_publisher.connect(QApplication::applicationDirPath());
        const bool isLoaded = m_window.load(codeOf(0), period);
        ChartData many = m_window.chart()->data();
        many.bars = manyDays();
        m_window.chart()->setData(many);
        m_window.show();
        const auto library = OverlayLibrary::open(QStringLiteral(PLUGIN_FILE));
        m_window.startOverlays(library.value(), m_session.gates());
        return isLoaded && waitFor([this] {
                   return m_publisher.isConnected() && m_session.desk()->endPoint()->isConnected();
               });
    }

    /// A quote of a security in the minute that is under way, at a price.
    void tell(int security, double price)
    {
        const int hundredth = m_told++ % 6000;
        QJsonObject quote = quoteOf({codeOf(security), Market::Shanghai, {}},
                                    {Trading::TradingDate::today().number(), 600, price, price, price, price,
                                     static_cast<double>(m_told)},
                                    10.0);
        quote[QLatin1String(Trading::QuoteFields::TIME)] =
            Trading::ClockTime::of(9, 59, hundredth / 100, hundredth % 100)->text();
        m_publisher.sendMessage(Trading::Channel::MARKET, Trading::Topic::QUOTE,
                                QJsonDocument(quote).toJson(QJsonDocument::Compact));
    }

    ChartView *chart() { return m_window.chart(); }

private:
    static TerminalOptions optionsOf(ChartPeriod period)
    {
        TerminalOptions options;
        options.period = period;
        options.overlays =
            QStringList{QStringLiteral("cost"), QStringLiteral("trades"), QStringLiteral("orders")};
        options.size = QSize(1600, 900);
        return options;
    }

    struct Folder : QTemporaryDir
    {
        Folder() { writeFolder(path()); }
    };

    Folder m_folder;
    LocalCommunication::LocalBroker m_broker;
    LocalCommunication::EndPoint m_publisher{nullptr};
    TradingSession m_session;
    MainWindow m_window;
    int m_told = 0;
};

double share(std::vector<double> values, double part)
{
    std::sort(values.begin(), values.end());
    return values[static_cast<size_t>(part * static_cast<double>(values.size() - 1))];
}

/// The market beside the chart: so many quotes a second, of each security in turn.
class Market500 : public QObject
{
public:
    explicit Market500(LiveWindow *window)
    {
        m_begin = Clock::now();
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this, [this, window] {
            const auto due =
                static_cast<int>(Milliseconds(Clock::now() - m_begin).count() * quotesPerSecond / 1000);
            for (; m_sent < due; ++m_sent) {
                window->tell(1 + m_sent % (securityCount - 1), 10 + m_sent % 100 / 100.0);
            }
        });
        m_timer.start(1);
    }
    int sent() const { return m_sent; }

private:
    QTimer m_timer;
    Clock::time_point m_begin;
    int m_sent = 0;
};

bool measureDrawing(LiveWindow *window, const char *title)
{
    Painted painted(window->chart());
    Turns turns;
    std::vector<double> latencies;
    for (int sample = 0; sample < samples; ++sample) {
        idle(std::chrono::milliseconds(20 + sample % 17));
        const double price = 10 + (sample + 1) / 1000.0;
        painted.await(price);
        const auto sent = Clock::now();
        window->tell(0, price);
        if (!waitFor([&painted] { return painted.at().has_value(); })) {
            std::printf("%s: a quote was not drawn\n", title);
            return false;
        }
        latencies.push_back(Milliseconds(*painted.at() - sent).count());
    }
    std::printf("%-44s p50 %6.2f  p99 %6.2f  longest %6.2f ms   longest turn %6.2f ms (%.2f of work)\n",
                title, share(latencies, 0.5), share(latencies, 0.99), share(latencies, 1), turns.longest(),
                turns.longestWork());
    return true;
}

bool measure(ChartPeriod period, const char *title)
{
    LiveWindow window(period);
    if (!window.open(period)) {
        std::printf("%s: the window is not on the bus\n", title);
        return false;
    }
    idle(std::chrono::milliseconds(500));
    window.tell(0, 10); // today's first, which begins the bar
    idle(std::chrono::milliseconds(500));
    std::printf("%s, %zu bars\n", title, window.chart()->data().bars.size());
    if (!measureDrawing(&window, "  alone, a recent view")) {
        return false;
    }
    window.chart()->showAll();
    idle(std::chrono::milliseconds(200));
    if (!measureDrawing(&window, "  alone, all bars in view")) {
        return false;
    }
    Market500 market(&window);
    const bool isDrawn = measureDrawing(&window, "  beside 1000 quotes/s, all bars in view");
    std::printf("  %d quotes of 499 other securities were sent meanwhile\n", market.sent());
    return isDrawn;
}

} // namespace

int main(int argc, char *argv[])
{
    if (!Trading::enterExchangeTime()) {
        return EXIT_FAILURE;
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    qputenv("TRADEBUS_INSTANCE", "live_bench " + QByteArray::number(::getpid())); // a bus of its own
    QApplication application(argc, argv);
    setAppearance(&application);
    return measure(ChartPeriod::Day, "Days") ? EXIT_SUCCESS : EXIT_FAILURE;
}
