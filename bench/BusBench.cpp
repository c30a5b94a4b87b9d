// What the bus costs: the round trip of a question, and a terminal full of overlays. Beside every figure
// stands what the same traffic takes with nothing but sockets, and with the MQTT library alone on the same
// broker, measured in the same run. With --json the
// figures are told to programs, with how the cost of joining grows with the number of endpoints.

#include "bench/support/LibraryPeers.h"
#include "bench/support/RawPeers.h"
#include "endpoint/BusAddress.h"
#include "endpoint/EndPoint.h"
#include "endpoint/LocalBroker.h"

#include <QCoreApplication>
#include <QFile>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <poll.h>
#include <string>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

#ifdef Q_OS_LINUX
#    include <sched.h>
#endif

using LocalCommunication::EndPoint;
using LocalCommunication::LocalBroker;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int questionBytes = 200;
constexpr int answerBytes = 2000;
constexpr int measuredRounds = 15;
constexpr int requestsPerRound = 2000;

constexpr int crowdSize = 1000;
constexpr int crowdRounds = 5;
constexpr int notifications = 20;

/// Every process on one core: pure work, without the time that a sleeping core takes to wake up.
bool pinToOneCore()
{
#ifdef Q_OS_LINUX
    cpu_set_t set;
    CPU_ZERO(&set);
    CPU_SET(0, &set);
    return ::sched_setaffinity(0, sizeof set, &set) == 0;
#else
    return false;
#endif
}

void allowManyDescriptors()
{
    constexpr rlim_t wanted = 65536;
    const rlimit raised{wanted, wanted};
    if (::setrlimit(RLIMIT_NOFILE, &raised) != 0) { // only root may raise what is allowed at most
        rlimit limit{};
        ::getrlimit(RLIMIT_NOFILE, &limit);
        limit.rlim_cur = std::min(limit.rlim_max, wanted);
        ::setrlimit(RLIMIT_NOFILE, &limit);
    }
}

double percentile(std::vector<double> values, double share)
{
    const auto index = static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), values.begin() + index, values.end());
    return values[static_cast<std::size_t>(index)];
}

double median(const std::vector<double> &values)
{
    return percentile(values, 0.5);
}

template <typename Work>
double microseconds(Work work)
{
    const Clock::time_point start = Clock::now();
    work();
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

[[noreturn]] void giveUp(const char *why)
{
    std::fprintf(stderr, "bus_bench: %s\n", why);
    std::exit(EXIT_FAILURE);
}

void runUntil(const std::function<bool()> &condition)
{
    QTimer limit;
    limit.setSingleShot(true);
    limit.start(60000);
    while (!condition()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (!limit.isActive()) {
            giveUp("the bus did not do in a minute what takes milliseconds");
        }
    }
}

/// Another program on the bus, in its Qt event loop, as the trading module is.
void respond(const QString &address, int lifeline)
{
    int count = 1;
    char name[] = "responder";
    char *arguments[] = {name, nullptr};
    const QCoreApplication application(count, arguments);
    const QSocketNotifier end(lifeline, QSocketNotifier::Read);
    QObject::connect(&end, &QSocketNotifier::activated, &application, &QCoreApplication::quit);
    EndPoint endPoint(nullptr);
    const QByteArray answer(answerBytes, 'a');
    QObject::connect(&endPoint, &EndPoint::messageReceived, &endPoint,
                     [&](const QByteArray &topic, const QByteArray &, const QByteArray &replyChannel) {
                         endPoint.sendMessage(replyChannel, topic, answer);
                     });
    endPoint.subscribe("Global", "TradeQuery");
    endPoint.connect(address);
    QCoreApplication::exec();
}

/// One way from a question to its answer, and what it took in every round.
struct Path
{
    const char *name;
    std::function<void()> roundTrip;
    std::vector<double> medians{};
    std::vector<double> slowest{}; // the 99th percentile
};

void measureRound(Path &path)
{
    std::vector<double> times;
    times.reserve(requestsPerRound);
    for (int i = 0; i < requestsPerRound; ++i) {
        times.push_back(microseconds(path.roundTrip));
    }
    path.medians.push_back(median(times));
    path.slowest.push_back(percentile(times, 0.99));
}

/// The order rotates, so that no path always follows the same one.
void measure(std::vector<Path> &paths)
{
    for (std::size_t round = 0; round < measuredRounds; ++round) {
        for (std::size_t i = 0; i < paths.size(); ++i) {
            measureRound(paths[(round + i) % paths.size()]);
        }
    }
}

void printRoundTrips(const std::vector<Path> &paths, bool pinned)
{
    std::printf("\nRound trip, %d byte question, %d byte answer: median of %d rounds of %d, %s\n",
                questionBytes, answerBytes, measuredRounds, requestsPerRound,
                pinned ? "all on one core" : "NOT pinned to a core");
    std::printf("  %-34s %10s %10s %14s %10s\n", "", "p50 us", "p99 us", "x socketpair", "x relay");
    const double pair = median(paths[0].medians);
    const double relay = median(paths[1].medians);
    for (const Path &path : paths) {
        const double p50 = median(path.medians);
        std::printf("  %-34s %10.1f %10.1f %14.2f %10.2f\n", path.name, p50, median(path.slowest), p50 / pair,
                    p50 / relay);
    }
}

/// What is told to programs, in the form of the library benchmark's reports.
class Report
{
public:
    void add(const std::string &name, double microsecondsTaken, double floor)
    {
        m_rows.push_back({name, microsecondsTaken, floor});
    }

    void print() const
    {
        std::printf("{\"benchmarks\":[");
        for (const Row &row : m_rows) {
            std::printf("%s\n{\"name\":\"%s\",\"real_time\":%.3f,\"time_unit\":\"us\"",
                        &row == m_rows.data() ? "" : ",", row.name.c_str(), row.taken);
            if (row.floor > 0) {
                std::printf(",\"median_us\":%.3f,\"floor_us\":%.3f,\"ratio\":%.4f", row.taken, row.floor,
                            row.taken / row.floor);
            }
            std::printf("}");
        }
        std::printf("\n]}\n");
    }

private:
    struct Row
    {
        std::string name;
        double taken;
        double floor; ///< 0 for none
    };

    std::vector<Row> m_rows;
};

/// A terminal with an endpoint for every overlay of every chart.
class Crowd
{
public:
    explicit Crowd(int size = crowdSize)
    {
        for (int i = 0; i < size; ++i) {
            auto endPoint = std::make_unique<EndPoint>(nullptr);
            endPoint->subscribe("Global", "TradeNotify");
            QObject::connect(endPoint.get(), &EndPoint::ready, endPoint.get(), [this] { ++m_ready; });
            QObject::connect(endPoint.get(), &EndPoint::messageReceived, endPoint.get(),
                             [this] { ++m_received; });
            m_endPoints.push_back(std::move(endPoint));
        }
    }

    /// One after the other, as charts are opened.
    void joinInTurn(const QString &address)
    {
        for (std::size_t i = 0; i < m_endPoints.size(); ++i) {
            m_endPoints[i]->connect(address);
            runUntil([&] { return m_ready == i + 1; });
        }
    }

    void joinAtOnce(const QString &address)
    {
        for (const auto &endPoint : m_endPoints) {
            endPoint->connect(address);
        }
        runUntil([this] { return m_ready == m_endPoints.size(); });
    }

    void deliver(EndPoint &sender, const QByteArray &notification)
    {
        m_received = 0;
        sender.sendMessage("Global", "TradeNotify", notification);
        runUntil([this] { return m_received == m_endPoints.size(); });
    }

private:
    std::vector<std::unique_ptr<EndPoint>> m_endPoints;
    std::size_t m_ready = 0;
    std::size_t m_received = 0;
};

/// The same with the MQTT library alone.
class LibraryCrowd
{
public:
    explicit LibraryCrowd(std::string socketPath) : m_socketPath(std::move(socketPath)) {}

    void joinInTurn()
    {
        for (int i = 0; i < crowdSize; ++i) {
            m_clients.push_back(std::make_unique<Library::Client>(m_socketPath, topic));
            awaitSubscription(*m_clients.back());
        }
    }

    void joinAtOnce()
    {
        for (int i = 0; i < crowdSize; ++i) {
            m_clients.push_back(std::make_unique<Library::Client>(m_socketPath, topic));
        }
        for (const auto &client : m_clients) {
            awaitSubscription(*client);
        }
    }

    void deliver(Library::Client &sender, const std::string &notification)
    {
        const int count = m_clients.front()->received() + 1;
        sender.publish(topic, notification);
        for (const auto &client : m_clients) {
            Library::workUntil(*client, [&] { return client->received() == count; });
        }
    }

private:
    static constexpr char topic[] = "bench/notify";

    static void awaitSubscription(Library::Client &client)
    {
        Library::workUntil(client, [&client] { return client.isSubscribed(); });
    }

    const std::string m_socketPath;
    std::vector<std::unique_ptr<Library::Client>> m_clients;
};

/// The same with sockets alone.
class RawCrowd
{
public:
    void join(const std::string &path)
    {
        for (int i = 0; i <= crowdSize; ++i) { // the first one sends
            m_sockets.push_back(Raw::connectTo(path));
            Raw::ask(m_sockets.back().number(), 1, 1);
            m_polled.push_back({m_sockets.back().number(), POLLIN, 0});
        }
    }

    void deliver(int size)
    {
        std::vector<char> buffer(static_cast<std::size_t>(size));
        if (::write(m_sockets.front().number(), buffer.data(), buffer.size()) != size) {
            giveUp("the raw crowd is gone");
        }
        std::vector<int> missing(m_sockets.size(), size);
        for (std::size_t complete = 1; complete < m_sockets.size();) {
            ::poll(m_polled.data(), static_cast<nfds_t>(m_polled.size()), -1);
            for (std::size_t i = 1; i < m_polled.size(); ++i) {
                if (m_polled[i].revents != 0) {
                    missing[i] -= static_cast<int>(::read(m_polled[i].fd, buffer.data(), buffer.size()));
                    complete += missing[i] == 0 ? 1 : 0;
                }
            }
        }
    }

private:
    std::vector<Raw::Descriptor> m_sockets;
    std::vector<pollfd> m_polled;
};

/// Where bare crowds meet: a program for each, so that none has the sockets of another one to close. All are
/// there before the bus is, whose sockets they would hold open.
class MeetingPlaces
{
public:
    MeetingPlaces(const std::string &path, int count)
    {
        for (int i = 0; i < count; ++i) {
            m_free.push_back(path + std::to_string(i));
            Raw::Descriptor listener = Raw::listenAt(m_free.back());
            m_programs.push_back(std::make_unique<Raw::Process>(
                [&] { Raw::serveCrowd(std::move(listener), crowdSize + 1, answerBytes); }));
        }
    }

    std::string next()
    {
        std::string path = m_free.back();
        m_free.pop_back();
        return path;
    }

private:
    std::vector<std::string> m_free;
    std::vector<std::unique_ptr<Raw::Process>> m_programs;
};

template <typename Deliver>
double medianDelivery(Deliver deliver)
{
    std::vector<double> times;
    for (int i = 0; i < notifications; ++i) {
        times.push_back(microseconds(deliver));
    }
    return median(times);
}

void tellCrowdRow(Report *report, const char *name, double microsecondsTaken, double floor)
{
    if (report != nullptr) {
        report->add(name, microsecondsTaken, floor);
        return;
    }
    std::printf("  %-34s %10.1f %14.1f %10.2f\n", name, microsecondsTaken / 1000, floor / 1000,
                microsecondsTaken / floor);
}

/// What joining and delivery take at the least, measured once in every round of the work beside it.
struct Floors
{
    std::vector<double> join{};
    std::vector<double> delivery{};

    void measure(MeetingPlaces &places)
    {
        RawCrowd bare;
        const std::string path = places.next();
        join.push_back(microseconds([&] { bare.join(path); }));
        delivery.push_back(medianDelivery([&] { bare.deliver(answerBytes); }));
    }
};

void measureCrowd(const QString &address, MeetingPlaces &places, Report *report)
{
    EndPoint sender(nullptr);
    sender.connect(address);
    runUntil([&] { return sender.isConnected(); });
    std::vector<double> inTurn;
    std::vector<double> atOnce;
    std::vector<double> smallDelivery;
    std::vector<double> largeDelivery;
    Floors floors;
    for (int round = 0; round < crowdRounds; ++round) {
        floors.measure(places);
        Crowd first;
        inTurn.push_back(microseconds([&] { first.joinInTurn(address); }));
        smallDelivery.push_back(
            medianDelivery([&] { first.deliver(sender, QByteArray(questionBytes, 'n')); }));
        largeDelivery.push_back(medianDelivery([&] { first.deliver(sender, QByteArray(answerBytes, 'n')); }));
    }
    for (int round = 0; round < crowdRounds; ++round) {
        Crowd crowd;
        atOnce.push_back(microseconds([&] { crowd.joinAtOnce(address); }));
    }
    const double bareJoin = median(floors.join);
    const double bareDelivery = median(floors.delivery);

    if (report == nullptr) {
        std::printf("\n%d endpoints in one process, median of %d rounds\n", crowdSize, crowdRounds);
        std::printf("  %-34s %10s %14s %10s\n", "", "ms", "sockets ms", "ratio");
    }
    tellCrowdRow(report, "1,000 endpoints connect, in turn", median(inTurn), bareJoin);
    tellCrowdRow(report, "1,000 endpoints connect, at once", median(atOnce), bareJoin);
    tellCrowdRow(report, "a notification of 2 kB to 1,000", median(largeDelivery), bareDelivery);
    tellCrowdRow(report, "a notification of 200 B to 1,000", median(smallDelivery), bareDelivery);
}

/// What of it is the library's.
void measureLibraryCrowd(const std::string &socketPath, MeetingPlaces &places, Report *report)
{
    Library::Client sender(socketPath, "bench/sender");
    std::vector<double> inTurn;
    std::vector<double> atOnce;
    std::vector<double> delivery;
    Floors floors;
    for (int round = 0; round < crowdRounds; ++round) {
        floors.measure(places);
        LibraryCrowd first(socketPath);
        inTurn.push_back(microseconds([&] { first.joinInTurn(); }));
        delivery.push_back(medianDelivery([&] { first.deliver(sender, std::string(answerBytes, 'n')); }));
    }
    for (int round = 0; round < crowdRounds; ++round) {
        LibraryCrowd crowd(socketPath);
        atOnce.push_back(microseconds([&] { crowd.joinAtOnce(); }));
    }
    const double bareJoin = median(floors.join);
    const double bareDelivery = median(floors.delivery);
    tellCrowdRow(report, "1,000 clients of the library alone connect, in turn", median(inTurn), bareJoin);
    tellCrowdRow(report, "1,000 clients of the library alone connect, at once", median(atOnce), bareJoin);
    tellCrowdRow(report, "a notification of 2 kB to 1,000 clients of the library alone", median(delivery),
                 bareDelivery);
}

void measureGrowth(const QString &address, Report *report)
{
    constexpr int descriptorsOfOne = 4;
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    for (int size = 1; size <= 10000 && limit.rlim_cur > static_cast<rlim_t>(size) * descriptorsOfOne;
         size *= 10) {
        Crowd crowd(size);
        const double taken = microseconds([&] { crowd.joinAtOnce(address); });
        report->add("growth/connect at once, endpoints/" + std::to_string(size), taken, 0);
    }
}

/// A figure of answers that did not come would be worth nothing.
void checkFirst(EndPoint &asker)
{
    for (int i = 0; i < 50; ++i) {
        if (asker.request("TradeQuery", QByteArray(questionBytes, 'q')).size() == answerBytes) {
            return;
        }
    }
    giveUp("nobody answers on the bus");
}

} // namespace

int main(int argc, char *argv[])
{
    const bool pinned = pinToOneCore();
    allowManyDescriptors();
    const QTemporaryDir directory;
    const QTemporaryDir runtime;
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
    const std::string relayPath =
        QFile::encodeName(directory.filePath(QStringLiteral("relay"))).toStdString();
    const std::string crowdPath =
        QFile::encodeName(directory.filePath(QStringLiteral("crowd"))).toStdString();

    Raw::Pair pair;
    Raw::Pair lifeline;
    Raw::Descriptor relayListener = Raw::listenAt(relayPath);
    const std::string busPath =
        QFile::encodeName(LocalCommunication::BusAddress::ofDirectory(directory.path()).socketPath)
            .toStdString();
    const Raw::Process echo([&] {
        pair.near.close();
        Raw::answerAll(pair.far.number(), questionBytes, answerBytes);
    });
    const Raw::Process relay([&] { Raw::relay(std::move(relayListener)); });
    const Raw::Descriptor relayed = Raw::connectTo(relayPath);
    const Raw::Process relayedEcho(
        [&] { Raw::answerAll(Raw::connectTo(relayPath).number(), questionBytes, answerBytes); });
    MeetingPlaces places(crowdPath, 2 * crowdRounds);
    const Raw::Process responder([&] {
        lifeline.near.close();
        respond(directory.path(), lifeline.far.number());
    });

    const Raw::Process libraryResponder([&] {
        lifeline.near.close();
        Library::answerAll(busPath, "bench/ask", answerBytes, lifeline.far.number());
    });

    const QCoreApplication application(argc, argv);
    LocalBroker broker;
    broker.start(directory.path());
    EndPoint asker(nullptr);
    asker.connect(directory.path());
    runUntil([&] { return asker.isConnected(); });
    asker.setRequestTimeout(std::chrono::milliseconds(200));
    checkFirst(asker);

    Library::Client libraryAsker(busPath, "bench/answer");
    const std::string libraryQuestion(questionBytes, 'q');
    const QByteArray question(questionBytes, 'q');
    std::vector<Path> paths{
        {"socketpair, no broker", [&] { Raw::ask(pair.near.number(), questionBytes, answerBytes); }},
        {"bare relay process", [&] { Raw::ask(relayed.number(), questionBytes, answerBytes); }},
        {"EndPoint::request", [&] { asker.request("TradeQuery", question); }},
        {"the MQTT library alone",
         [&] { Library::ask(libraryAsker, "bench/ask", libraryQuestion, "bench/answer"); }},
    };
    measure(paths);
    if (argc < 2 || qstrcmp(argv[1], "--json") != 0) {
        printRoundTrips(paths, pinned);
        measureCrowd(directory.path(), places, nullptr);
        measureLibraryCrowd(busPath, places, nullptr);
        return EXIT_SUCCESS;
    }
    Report report;
    report.add("request and answer over the bus", median(paths[2].medians), median(paths[1].medians));
    report.add("the same with the library alone", median(paths[3].medians), median(paths[1].medians));
    measureCrowd(directory.path(), places, &report);
    measureLibraryCrowd(busPath, places, &report);
    measureGrowth(directory.path(), &report);
    report.print();
    return EXIT_SUCCESS;
}
