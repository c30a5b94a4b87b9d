// What a process has in memory while an overlay hears a long answer: the most at once, beside the bytes of
// the message, told to programs. Bytes are counted where every library asks for them, at malloc().
#include "bench/support/RawPeers.h"
#include "endpoint/EndPoint.h"
#include "endpoint/LocalBroker.h"
#include "tests/support/FakeHost.h"
#include "tests/support/SentTrade.h"
#include "tradechartobject/objects/BSPoint.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <malloc.h>
#include <vector>

// NOLINTBEGIN(readability-identifier-naming): names of the C library
extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void __libc_free(void *block);
}
// NOLINTEND(readability-identifier-naming)

namespace {

/// Of the thread that has the event loop; the process has no other that works.
struct Heap
{
    std::size_t used = 0;
    std::size_t most = 0; ///< since it was set to `used`
};

Heap heap;

void *taken(void *block)
{
    heap.used += ::malloc_usable_size(block);
    heap.most = std::max(heap.most, heap.used);
    return block;
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) void *malloc(std::size_t size)
{
    return taken(__libc_malloc(size));
}

__attribute__((visibility("default"))) void *calloc(std::size_t count, std::size_t size)
{
    return taken(__libc_calloc(count, size));
}

/// Where it does not fit, both blocks are there for a moment.
__attribute__((visibility("default"))) void *realloc(void *block, std::size_t size)
{
    heap.used -= ::malloc_usable_size(block);
    return taken(__libc_realloc(block, size));
}

__attribute__((visibility("default"))) void free(void *block)
{
    heap.used -= ::malloc_usable_size(block);
    __libc_free(block);
}
}

namespace {

using LocalCommunication::EndPoint;
using LocalCommunication::LocalBroker;

constexpr int rowCount = 100'000;

QByteArray answerBytes()
{
    QJsonArray rows;
    for (int i = 0; i < rowCount; ++i) {
        SentTrade trade;
        trade.side = i % 3 == 0 ? "S" : "B";
        trade.date = QByteArray::number(20200101 + i % 28);
        rows.append(trade.whole());
    }
    return R"({"cmd":"HistoryTrade","stkcode":"600536","market":"1","success":true,"data":)" +
           QJsonDocument(rows).toJson(QJsonDocument::Compact) + '}';
}

/// The trading module, a process of its own.
void answerOn(const QString &address, int lifeline)
{
    int count = 1;
    char name[] = "module";
    char *arguments[] = {name, nullptr};
    const QCoreApplication application(count, arguments);
    const QSocketNotifier end(lifeline, QSocketNotifier::Read);
    QObject::connect(&end, &QSocketNotifier::activated, &application, &QCoreApplication::quit);
    EndPoint endPoint(nullptr);
    const QByteArray answer = answerBytes();
    QObject::connect(
        &endPoint, &EndPoint::messageReceived, &endPoint,
        [&](const QByteArray &topic, const QByteArray &question, const QByteArray &replyChannel) {
            if (question.contains("HistoryTrade")) {
                endPoint.sendMessage("screen-1", topic, answer);
            } else {
                endPoint.sendMessage(replyChannel, topic, "{}");
            }
        });
    endPoint.subscribe("Global", "TradeQuery");
    endPoint.connect(address);
    QCoreApplication::exec();
}

void runUntil(const std::function<bool()> &condition)
{
    QTimer limit;
    limit.setSingleShot(true);
    limit.start(std::chrono::seconds(30));
    while (!condition() && limit.isActive()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    if (!condition()) {
        std::fprintf(stderr, "memory_bench: the bus did not do in half a minute what takes milliseconds\n");
        std::exit(EXIT_FAILURE);
    }
}

struct Taken
{
    double most;  ///< at once, from the question to the repaint
    double stays; ///< the records
};

/// In the form of the library benchmark's reports; the floor are the bytes of the message.
void print(const Taken &taken, double bytes)
{
    constexpr char row[] = R"(%s{"name":"%s","bytes":%.0f,"floor_bytes":%.0f})";
    std::printf("{\"benchmarks\":[\n");
    std::printf(row, "", "an answer of 100,000 trades, at the most", taken.most, bytes);
    std::printf(row, ",\n", "the records that stay of it", taken.stays, bytes);
    std::printf("\n]}\n");
}

/// What an overlay's question and its answer take.
Taken takenByAnAnswer(const QString &address)
{
    FakeAxis axis;
    bool isMarked = false;
    axis.onUpdate = [&isMarked] { isMarked = true; };
    BSPoint overlay(axis, QJsonObject(), nullptr);
    EndPoint neighbour(nullptr);
    neighbour.connect(address);
    runUntil([&neighbour] { return neighbour.isConnected(); }); // the overlay has joined before it
    const std::size_t before = heap.used;
    heap.most = before;
    const std::vector<Korvane::AnalyData> days{makeDayBar(20200101), makeDayBar(20200128)};
    overlay.calcIt(makeSecurity(1, "600536", 1), days.data(), static_cast<int>(days.size()),
                   Korvane::DayPeriod, 0, 0);
    runUntil([&isMarked] { return isMarked; });
    QCoreApplication::processEvents(); // the message has gone
    return {static_cast<double>(heap.most - before), static_cast<double>(heap.used - before)};
}

} // namespace

int main(int argc, char *argv[])
{
    const QTemporaryDir runtime;
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
    const QString address = QFileInfo(QString::fromLocal8Bit(argv[0])).absolutePath();
    Raw::Pair lifeline;
    const Raw::Process module([&] {
        lifeline.near.close();
        answerOn(address, lifeline.far.number());
    });
    const double bytes = answerBytes().size();
    const QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    LocalBroker broker;
    broker.start(QCoreApplication::applicationDirPath());
    EndPoint asker(nullptr);
    asker.connect(address);
    asker.setRequestTimeout(std::chrono::milliseconds(200));
    while (asker.request("TradeQuery", "Is anybody there?").isEmpty()) {
        QCoreApplication::processEvents(); // the trading module joins, too
    }
    print(takenByAnAnswer(address), bytes);
    return EXIT_SUCCESS;
}
