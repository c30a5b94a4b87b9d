#include "terminal/bars/LedgerFills.h"

#include "trading/HiddenPasswords.h"
#include "trading/LedgerAddress.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <chrono>

namespace Terminal {

namespace {

using Fills = std::vector<Fill>;

QString text(const char *source)
{
    return QCoreApplication::translate("LedgerFills", source);
}

/// Days are written for people: 2024-01-31.
std::optional<Trading::TradingDate> dayIn(const QJsonObject &trade)
{
    return Trading::TradingDate::ofText(trade[QLatin1String("date")].toString().remove(QLatin1Char('-')));
}

} // namespace

std::optional<Fills> fillsIn(const QByteArray &json, const Trading::SecurityId &security)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isArray()) {
        return std::nullopt;
    }
    Fills fills;
    for (const auto &row : document.array()) {
        const QJsonObject trade = row.toObject();
        const auto day = dayIn(trade);
        const double price = trade[QLatin1String("price")].toString().toDouble();
        const bool isOfSecurity =
            trade[QLatin1String("code")].toString() == security.code &&
            trade[QLatin1String("market")].toString() == Trading::marketLetters(security.market);
        if (day && price > 0 && isOfSecurity) { // bonus shares have no price
            fills.push_back({*day, price, trade[QLatin1String("quantity")].toString().toLongLong()});
        }
    }
    return fills;
}

QString missingLedger(const QString &ledger)
{
    return Trading::isDatabaseAddress(ledger) || QFileInfo::exists(ledger)
               ? QString()
               : text("the trades of ledger %1 could not be read: %2")
                     .arg(ledger, text("there is no such file"));
}

Loaded<Fills> ledgerFills(const QString &moduleProgram, const QString &ledger,
                          const Trading::SecurityId &security)
{
    constexpr std::chrono::milliseconds patience{30000};
    QProcess module;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(Trading::ledgerVariable), ledger);
    module.setProcessEnvironment(environment);
    module.start(moduleProgram, {QStringLiteral("trades"), QStringLiteral("--json"), QStringLiteral("--code"),
                                 security.code});
    const bool hasEnded = module.waitForFinished(static_cast<int>(patience.count()));
    if (!hasEnded || module.exitStatus() != QProcess::NormalExit || module.exitCode() != 0) {
        const QString reason = QString::fromUtf8(module.readAllStandardError()).trimmed();
        return Loaded<Fills>::failure(
            text("the trades of ledger %1 could not be read: %2")
                .arg(Trading::shownLedger(ledger), reason.isEmpty() ? module.errorString() : reason));
    }
    const auto fills = fillsIn(module.readAllStandardOutput(), security);
    return fills ? Loaded<Fills>(*fills)
                 : Loaded<Fills>::failure(text("the trades of ledger %1 could not be read: %2")
                                              .arg(Trading::shownLedger(ledger), moduleProgram));
}

} // namespace Terminal
