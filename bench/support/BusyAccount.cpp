#include "bench/support/BusyAccount.h"

#include "tests/support/SentOrder.h"
#include "tests/support/SentTrade.h"
#include "trading/TradingDate.h"

#include <QDate>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>

namespace {

using LocalCommunication::EndPoint;
using Terminal::Bar;
using Terminal::Bars;

constexpr int daysOfAFile = 45'000; // it begins after 1900
constexpr int minutesOfADay = 240;

int dateOf(int bar)
{
    return Trading::TradingDate::today().plusDays(bar - BusyAccount::barCount).number();
}

double priceOf(int bar)
{
    return 10 + std::sin(bar / 50.0) + bar * 7919 % 100 / 100.0;
}

/// hhmm, from 09:31 to 15:00 without the hours of noon.
int minuteOf(int number)
{
    constexpr int morning = 120;
    const int minute = number < morning ? 9 * 60 + 31 + number : 13 * 60 + 1 + number - morning;
    return minute / 60 * 100 + minute % 60;
}

QByteArray rowOf(int time, double price)
{
    return QStringLiteral("%1,%2,%3,%4,%2,%5\n")
        .arg(time)
        .arg(price, 0, 'f', 2)
        .arg(price + 0.1, 0, 'f', 2)
        .arg(price - 0.1, 0, 'f', 2)
        .arg(100'000 + time % 977 * 100)
        .toLatin1();
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(content);
}

QByteArray compact(const QJsonArray &rows)
{
    return QJsonDocument(rows).toJson(QJsonDocument::Compact);
}

QByteArray tradeRows()
{
    QJsonArray rows;
    for (int i = 0; i < BusyAccount::tradeCount; ++i) {
        SentTrade trade;
        trade.side = i % 3 == 0 ? "S" : "B";
        trade.date = QByteArray::number(dateOf(2 * i));
        rows.append(trade.whole());
    }
    return compact(rows);
}

QByteArray orderRows()
{
    constexpr const char *statuses[] = {"2", "7", "8"};
    QJsonArray rows;
    for (int i = 0; i < BusyAccount::orderCount; ++i) {
        SentOrder order;
        order.side = i % 2 == 0 ? "0B" : "0S";
        order.status = statuses[i % 3];
        order.number = QByteArray::number(700001 + i);
        order.time = QByteArray::number(minuteOf(i * minutesOfADay / BusyAccount::orderCount) * 10000);
        order.price = QByteArray::number(10 + i % 100 / 100.0, 'f', 2);
        QJsonObject row(order);
        row.insert(QStringLiteral("stkcode"), BusyAccount::code(0));
        row.insert(QStringLiteral("stkname"), QStringLiteral("S"));
        rows.append(row);
    }
    return compact(rows);
}

} // namespace

BusyAccount::BusyAccount()
{
    const QDir folder(m_folder.path());
    folder.mkpath(QStringLiteral("daily"));
    folder.mkpath(QStringLiteral("minute"));
    write(folder.filePath(QStringLiteral("securities.csv")),
          "code,market,name\n" + code(0).toLatin1() + ",SH,S\n" + code(1).toLatin1() + ",SH,T\n");
    writeDays(0);
    writeDays(1);
    writeMinutes();
}

QString BusyAccount::code(int number)
{
    return QString::number(600000 + number);
}

Bars BusyAccount::allDays()
{
    Bars days;
    for (int bar = 0; bar < barCount; ++bar) {
        const double price = priceOf(bar);
        days.push_back({dateOf(bar), 0, price, price + 0.1, price - 0.1, price, 1e5 + bar % 977});
    }
    return days;
}

void BusyAccount::writeDays(int number) const
{
    QByteArray content("date,open,high,low,close,volume\n");
    for (int bar = barCount - daysOfAFile; bar < barCount; ++bar) {
        const int date = dateOf(bar);
        if (Trading::TradingDate::ofNumber(date).value().calendarDate().dayOfWeek() < Qt::Saturday) {
            content += rowOf(date, priceOf(bar));
        }
    }
    write(m_folder.filePath(QStringLiteral("daily/%1.csv").arg(code(number))), content);
}

void BusyAccount::writeMinutes() const
{
    QByteArray content("time,open,high,low,close,volume\n");
    for (int minute = 0; minute < minutesOfADay; ++minute) {
        content += rowOf(minuteOf(minute), 10.5 + minute % 10 / 100.0);
    }
    write(m_folder.filePath(
              QStringLiteral("minute/%1_%2.csv").arg(code(0)).arg(Trading::TradingDate::today().number())),
          content);
}

void BusyAccount::answerOn(const QString &bus)
{
    const auto answer = [trades = tradeRows(), orders = orderRows()](EndPoint &own, const QByteArray &payload,
                                                                     const QByteArray &replyChannel) {
        QJsonObject head = QJsonDocument::fromJson(payload).object();
        const QString command = head[QStringLiteral("cmd")].toString();
        head[QStringLiteral("success")] = true;
        head[QStringLiteral("market")] = QStringLiteral("1");
        QByteArray text = QJsonDocument(head).toJson(QJsonDocument::Compact);
        text.chop(1);
        const QByteArray data = command == QLatin1String("HistoryTrade")        ? trades
                                : command == QLatin1String("EntrustTodayTrade") ? orders
                                : command == QLatin1String("HolderCostPrice")
                                    ? QByteArray(R"({"stkcode":"600000","market":"1","costprice":"10.5"})")
                                    : QByteArray("[]");
        const QByteArray screen = head[QStringLiteral("screenId")].toString().toUtf8();
        own.sendMessage(screen.isEmpty() ? replyChannel : screen, "TradeQuery",
                        text + ",\"data\":" + data + '}');
    };
    m_module = std::make_unique<BusThread>(bus, "TradeQuery", answer);
}
