// From the start of the program to the first frame of its window, on the X server that DISPLAY names: nothing
// else may be shown there, and what shows nothing is black. The floor is the program that only says its
// version.
#include "bench/support/StartedProgram.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPixmap>
#include <QScreen>
#include <QThread>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int runs = 11;
constexpr int patience = 10'000; // milliseconds
constexpr std::chrono::milliseconds betweenLooks{1};

double microsecondsOf(const QElapsedTimer &clock)
{
    return static_cast<double>(clock.nsecsElapsed()) / 1e3;
}

/// In the middle of the chart.
bool isPainted()
{
    const QImage pixel = QGuiApplication::primaryScreen()->grabWindow(0, 400, 300, 1, 1).toImage();
    return !pixel.isNull() && pixel.pixelColor(0, 0) != Qt::black;
}

void waitUntilPainted(bool painted)
{
    QElapsedTimer clock;
    clock.start();
    while (isPainted() != painted) {
        if (clock.hasExpired(patience)) {
            std::fprintf(stderr, "window_bench: the screen %s\n", painted ? "stays black" : "stays painted");
            std::exit(EXIT_FAILURE);
        }
        QThread::usleep(std::chrono::microseconds(betweenLooks).count());
    }
}

double microsecondsToVersion(const FreshPlace &place)
{
    QProcess process;
    QElapsedTimer clock;
    clock.start();
    place.startIn(&process, QStringLiteral(TRADETERMINAL), {QStringLiteral("--version")});
    process.waitForFinished(patience);
    return microsecondsOf(clock);
}

double microsecondsToFrame(const FreshPlace &place, const QStringList &words)
{
    waitUntilPainted(false);
    QProcess process;
    QElapsedTimer clock;
    clock.start();
    place.startIn(&process, QStringLiteral(TRADETERMINAL), words);
    waitUntilPainted(true);
    const double taken = microsecondsOf(clock);
    process.terminate();
    process.waitForFinished(patience);
    return taken;
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    const FreshPlace place;
    const QStringList words{QStringLiteral("--data"),   QStringLiteral(TRADECHART_EXAMPLES),
                            QStringLiteral("--code"),   QStringLiteral("600519"),
                            QStringLiteral("--plugin"), QStringLiteral(PLUGIN_FILE),
                            QStringLiteral("--module"), QStringLiteral(TRADEMODULE),
                            QStringLiteral("--ledger"), place.home.filePath(QStringLiteral("account.db"))};
    std::vector<double> floors;
    std::vector<double> works;
    for (int run = 0; run < runs; ++run) {
        floors.push_back(microsecondsToVersion(place));
        works.push_back(microsecondsToFrame(place, words));
    }
    const QJsonObject report{{QStringLiteral("name"), QStringLiteral("first frame of the window")},
                             {QStringLiteral("median_us"), medianOf(works)},
                             {QStringLiteral("floor_us"), medianOf(floors)}};
    std::printf(
        "%s\n",
        QJsonDocument(QJsonObject{{QStringLiteral("benchmarks"), QJsonArray{report}}}).toJson().constData());
    return EXIT_SUCCESS;
}
