#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/Properties.h"

#include "endpoint/BusAddress.h"
#include "endpoint/TopicPath_p.h"
#include "trademodule/Error.h"
#include "trademodule/import/ImportProfile.h"
#include "trademodule/ledger/PostgreSqlAddress.h"
#include "trading/LedgerAddress.h"
#include "trading/TradingCalendar.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

using namespace LocalCommunication;

namespace {

// endpoint.ini

/// One name of a path, as every byte but the plain ones is written %XX.
bool isLevel(const QByteArray &level)
{
    return !level.isEmpty() && std::all_of(level.begin(), level.end(), [](char byte) {
        return QByteArray("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~%")
            .contains(byte);
    });
}

bool isPrefix(const QByteArray &prefix)
{
    if (prefix.isEmpty()) {
        return true;
    }
    const QList<QByteArray> levels = prefix.chopped(1).split('/');
    return prefix.endsWith('/') && std::all_of(levels.begin(), levels.end(), isLevel);
}

bool isUsable(const BusAddress &address)
{
    switch (address.transport) {
    case BusAddress::Transport::UnixSocket:
        return address.socketPath.startsWith(QLatin1Char('/'));
    case BusAddress::Transport::Tcp:
    case BusAddress::Transport::Tls:
        return !address.host.isEmpty() && address.port > 0 && address.port < 65536;
    }
    return false;
}

void checkAddress(const BusAddress &address, const QString &file)
{
    if (!address.isValid()) {
        demand(address.problem.startsWith(file),
               "a problem does not name the file: " + address.problem.toStdString());
        return;
    }
    demand(isUsable(address), "an address leads nowhere: " + address.toString().toStdString());
    demand(isPrefix(address.prefix), "a prefix is none of names: " + address.prefix.toStdString());
    demand(address.password.isEmpty() || !address.username.isEmpty(), "a password of nobody");
    demand(address.caFile.isEmpty() || address.transport == BusAddress::Transport::Tls,
           "a certificate where nothing is encrypted");
}

void checkBusSettings(const QByteArray &bytes)
{
    static const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("endpoint.ini")));
    file.open(QIODevice::WriteOnly);
    file.write(bytes);
    file.close();
    checkAddress(BusAddress::ofDirectory(folder.path()), file.fileName());
}

// Topics

void checkTopic(FuzzInput input)
{
    const QByteArray prefix = input.flag() ? QByteArray("desk7/") : QByteArray();
    const TopicName name{input.text(300), input.text(300)};
    const QByteArray path = topicPath(prefix, name);
    if (name.channel.isEmpty() || name.topic.isEmpty()) {
        demand(path.isEmpty(), "a name without a channel or a topic has a path");
        return;
    }
    const QList<QByteArray> levels = path.mid(prefix.size()).split('/');
    demand(path.startsWith(prefix) && levels.size() == 2, "a name reaches into another level");
    demand(isLevel(levels[0]) && isLevel(levels[1]), "a level has bytes of its own meaning");
    demand(QByteArray::fromPercentEncoding(levels[0]) == name.channel &&
               QByteArray::fromPercentEncoding(levels[1]) == name.topic,
           "a path does not tell its name");
}

// What the trading module is told

void checkLedgerAddress(const QByteArray &bytes)
{
    const QString location = QString::fromUtf8(bytes);
    const QString secret = QStringLiteral("s3cr3tw0rd");
    const bool isHidden = !Trading::isDatabaseAddress(location) ||
                          !Trading::shownLedger(location).contains(secret) || !location.contains(secret);
    try {
        const TradeModule::PostgreSqlAddress address(location);
        const bool isPassword = address.password() == secret && location.count(secret) == 1;
        demand(!isPassword || (isHidden && !address.shown().contains(secret)),
               "a password is shown: " + address.shown().toStdString());
        demand(address.port() > 0 && address.port() < 65536, "a port that there is not");
        address.options();
        address.host();
    } catch (const TradeModule::Error &) {
        return; // a refusal
    }
}

void checkProfile(const QByteArray &bytes)
{
    try {
        const auto profile = TradeModule::ImportProfile::ofText(QString::fromUtf8(bytes));
        const QString text = profile.text();
        demand(TradeModule::ImportProfile::ofText(text).text() == text,
               "a profile is read otherwise than it is written");
    } catch (const TradeModule::Error &error) {
        demand(!error.reason().isEmpty(), "a refusal without a reason");
    }
}

void checkCalendar(const QByteArray &bytes)
{
    Trading::TradingCalendar calendar;
    const auto fault = calendar.add(bytes, QStringLiteral("holidays.csv"));
    if (fault) {
        demand(fault->path == QStringLiteral("holidays.csv") && fault->line > 0, "a fault has no place");
        for (int year = 1; year < 10000; year += 37) {
            demand(!calendar.knowsYear(year), "a wrong calendar counts");
        }
    }
    demand(!calendar.isTradingDay(Trading::TradingDate::of(2024, 1, 6).value()), "a Saturday of trading");
}

} // namespace

void checkSettings(const QByteArray &bytes)
{
    const QByteArray content = bytes.mid(1);
    switch (bytes.isEmpty() ? 'I' : bytes.front()) {
    case 'T':
        checkTopic(FuzzInput(content));
        break;
    case 'L':
        checkLedgerAddress(content);
        break;
    case 'P':
        checkProfile(content);
        break;
    case 'H':
        checkCalendar(content);
        break;
    default:
        checkBusSettings(bytes);
        break;
    }
}
