// A terminal with nothing but Qt and this package: it makes every overlay of the factory over two files of
// bars, drives them, and writes a picture when all have drawn. The trading module may come later.
#include "Chart.h"

#include <endpoint/LocalBroker.h>
#include <endpoint/Readiness.h>

/// Lines of "time,open,high,low,close,volume"; time is yyyymmdd, or hhmm of a day, which overlays get packed.
static QVector<Korvane::AnalyData> readBars(const QString &path, unsigned day)
{
    QVector<Korvane::AnalyData> bars;
    QFile file(path);
    for (file.open(QIODevice::ReadOnly), file.readLine(); !file.atEnd();) { // but for the heading
        const QList<QByteArray> words = file.readLine().split(',');
        const unsigned time = words[0].toUInt();
        const unsigned minutes = time / 100 * 60 + time % 100;
        const unsigned packed = day == 0 ? time : (day / 10000 - 2004) << 27U | day % 10000 << 16U | minutes;
        bars.append({packed, {}, words[2].toDouble(), words[3].toDouble(), words[4].toDouble(), {}});
    }
    return bars;
}

int main(int count, char **words)
{
    qputenv("TZ", "Asia/Shanghai"); // today is the market's
    const QGuiApplication application(count, words);
    using Factory = Korvane::IChartObject *(*)(Korvane::IChartAxis &, const char *);
    const auto create = reinterpret_cast<Factory>(QLibrary(words[1]).resolve("CreateChartObject"));
    if (create == nullptr || count != 5) {
        qFatal("usage: host LIBRARY CODE.csv MINUTES.csv PICTURE.png");
    }
    Chart days, minutes;
    qstrncpy(days.security.code, qPrintable(QFileInfo(words[2]).baseName()), sizeof days.security.code);
    minutes.security = days.security;
    days.bars = readBars(words[2], 0);
    minutes.bars = readBars(words[3], QDate::currentDate().toString("yyyyMMdd").toUInt()); // as if of today
    minutes.period = Korvane::IntradayPeriod;
    QImage picture(900, 600, QImage::Format_RGB32);
    minutes.pane.translate(0, 300);
    days.update = minutes.update = [&] {
        days.show(picture);
        minutes.show(picture);
        if (days.drawn.size() > 1 && !minutes.drawn.isEmpty()) { // the cost and trades; orders
            qInfo("%s", qPrintable((days.drawn + minutes.drawn).join('\n')));
            QGuiApplication::exit(picture.save(words[4]) ? 0 : 1);
        }
    };
    LocalCommunication::LocalBroker broker; // does nothing when another program of this folder has one
    broker.start(QGuiApplication::applicationDirPath());
    LocalCommunication::Readiness readiness; // overlays that are made before a module is there ask in vain
    QObject::connect(&readiness, &LocalCommunication::Readiness::ready, [&] {
        days.overlays = {create(days, R"({"type":0})"), create(days, R"({"type":1})")};
        minutes.overlays = {create(minutes, R"({"type":2})")};
        days.update();
    });
    readiness.start(QGuiApplication::applicationDirPath());
    return QGuiApplication::exec();
}
