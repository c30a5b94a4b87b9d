// From the start of the program to its picture, as a user starts it: with a broker and a trading module of
// its own. A picture of bars alone is what a window shows first. The floor is the program that only says its
// version: its libraries loaded, and Qt's application made.
#include "bench/support/StartedProgram.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

constexpr int runs = 11;
constexpr int patience = 30'000; // milliseconds

struct Place : FreshPlace
{
    Place()
    {
        environment.remove(QStringLiteral("DISPLAY"));
        environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
        environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    }

    /// Microseconds until it has ended; a start that fails ends the benchmark.
    double microsecondsOf(const QString &program, const QStringList &words) const
    {
        QProcess process;
        QElapsedTimer clock;
        clock.start();
        startIn(&process, program, words);
        if (!process.waitForFinished(patience) || process.exitCode() != 0) {
            std::fprintf(stderr, "start_bench: %s %s failed\n", qUtf8Printable(program),
                         qUtf8Printable(words.join(QLatin1Char(' '))));
            std::exit(EXIT_FAILURE);
        }
        return static_cast<double>(clock.nsecsElapsed()) / 1e3;
    }
};

struct Start
{
    QString name;
    QStringList words;
};

/// In turn with its floor, so that a change of the machine's speed meets both.
QJsonObject measured(const Place &place, const QString &terminal, const Start &start)
{
    std::vector<double> floors;
    std::vector<double> works;
    for (int run = 0; run < runs; ++run) {
        floors.push_back(place.microsecondsOf(terminal, {QStringLiteral("--version")}));
        works.push_back(place.microsecondsOf(terminal, start.words));
    }
    return {{QStringLiteral("name"), start.name},
            {QStringLiteral("median_us"), medianOf(works)},
            {QStringLiteral("floor_us"), medianOf(floors)}};
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QString terminal = QStringLiteral(TRADETERMINAL);
    const Place place;
    const QString ledger = place.home.filePath(QStringLiteral("account.db"));
    place.microsecondsOf(QStringLiteral(TRADEMODULE),
                         {QStringLiteral("--ledger"), ledger, QStringLiteral("import"),
                          QStringLiteral(TRADECHART_EXAMPLES "/statement.csv")});
    const QStringList bars{QStringLiteral("--data"),     QStringLiteral(TRADECHART_EXAMPLES),
                           QStringLiteral("--code"),     QStringLiteral("600519"),
                           QStringLiteral("--snapshot"), place.home.filePath(QStringLiteral("picture.png"))};
    const QStringList account = bars + QStringList{QStringLiteral("--plugin"), QStringLiteral(PLUGIN_FILE),
                                                   QStringLiteral("--module"), QStringLiteral(TRADEMODULE),
                                                   QStringLiteral("--ledger"), ledger};
    const auto with = [&account](const char *option, const char *value) {
        return account + QStringList{QLatin1String(option), QLatin1String(value)};
    };
    QJsonArray reports;
    for (const Start &start : {Start{QStringLiteral("picture of bars, start to end of the program"), bars},
                               Start{QStringLiteral("picture with cost, trades and orders"),
                                     with("--overlays", "cost,trades,orders")},
                               Start{QStringLiteral("picture with all trades"), with("--trades", "on")},
                               Start{QStringLiteral("picture with results"), with("--results", "sale")}}) {
        reports.append(measured(place, terminal, start));
    }
    std::printf("%s\n",
                QJsonDocument(QJsonObject{{QStringLiteral("benchmarks"), reports}}).toJson().constData());
    return EXIT_SUCCESS;
}
