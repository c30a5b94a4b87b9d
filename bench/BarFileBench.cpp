// What reading bars costs, beside the bytes of their file and the numbers in them, without knowing what they
// mean.
#include "bench/support/Paired.h"
#include "terminal/data/BarFile.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDate>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <charconv>
#include <system_error>
#include <vector>

namespace {

using namespace Terminal;

constexpr int barsOfAFile = 50'000; // all the trading days that a century could have
constexpr int files = 2;

QByteArray ownForm()
{
    QByteArray text = "date,open,high,low,close,volume\n";
    QDate day(1900, 1, 1);
    for (int i = 0; i < barsOfAFile; ++i) {
        const double price = 10 + i % 100 * 0.01;
        text += day.toString(QStringLiteral("yyyyMMdd")).toLatin1();
        for (const double value : {price, price + 0.05, price - 0.05, price + 0.02}) {
            text += ',' + QByteArray::number(value, 'f', 2);
        }
        text += ',' + QByteArray::number(100 * (1000 + i)) + '\n';
        do {
            day = day.addDays(1);
        } while (day.dayOfWeek() >= Qt::Saturday);
    }
    return text;
}

/// One of the foreign forms: newest first, lots, amounts in thousands.
QByteArray foreignForm()
{
    const QList<QByteArray> own = ownForm().trimmed().split('\n');
    QByteArray text = "ts_code,trade_date,open,high,low,close,pre_close,change,pct_chg,vol,amount\n";
    for (int i = own.size() - 1; i > 0; --i) {
        const QList<QByteArray> cells = own[i].split(',');
        const double volume = cells[5].toDouble();
        text += "000001.SZ," + cells[0] + ',' + cells[1] + ',' + cells[2] + ',' + cells[3] + ',' + cells[4] +
                ",0,0.1,1.0," + QByteArray::number(volume / 100, 'f', 2) + ',' +
                QByteArray::number(volume * cells[1].toDouble() / 1000, 'f', 3) + '\n';
    }
    return text;
}

/// What begins as a number in each cell of a file.
std::vector<double> numbersIn(const QString &path)
{
    QFile file(path);
    benchmark::DoNotOptimize(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    std::vector<double> numbers;
    const char *const end = text.constData() + text.size();
    for (const char *cell = text.constData(); cell < end; ++cell) {
        double number = 0;
        if (std::from_chars(cell, end, number).ec == std::errc()) {
            numbers.push_back(number);
        }
        cell = std::find_if(cell, end, [](char c) { return c == ',' || c == '\n'; });
    }
    return numbers;
}

void read(benchmark::State &state, const QByteArray &text)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.csv"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        state.SkipWithError("no file");
        return;
    }
    file.close();
    const auto readNumbers = [&path] {
        for (int i = 0; i < files; ++i) {
            benchmark::DoNotOptimize(numbersIn(path));
        }
    };
    Paired(state).run(readNumbers, [&] {
        for (int i = 0; i < files; ++i) {
            const auto bars = readDailyBars(path);
            if (!bars || bars.value().size() != barsOfAFile) {
                state.SkipWithError(qPrintable(bars.error()));
            }
        }
    });
    state.counters["bars"] = barsOfAFile * files;
}

void readOwnForm(benchmark::State &state)
{
    read(state, ownForm());
}

void readForeignForm(benchmark::State &state)
{
    read(state, foreignForm());
}

BENCHMARK(readOwnForm)
    ->Name("bars of 2 files of 50,000, own form")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK(readForeignForm)
    ->Name("bars of 2 files of 50,000, foreign form")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
