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

/// A trade of a security, as far as it has a price: bonus shares have none.
std::optional<std::pair<Trading::SecurityId, Fill>> fillIn(const QJsonObject &trade)
{
    const auto day = dayIn(trade);
    const auto market = Trading::marketOfLetters(trade[QLatin1String("market")].toString());
    const double price = trade[QLatin1String("price")].toString().toDouble();
    if (!day || !market || price <= 0) {
        return std::nullopt;
    }
    return std::pair(Trading::SecurityId{trade[QLatin1String("code")].toString(), *market},
                     Fill{*day, price, trade[QLatin1String("quantity")].toString().toLongLong()});
}

void startListing(QProcess *module, const QString &program, const QString &ledger, const QStringList &options)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(Trading::ledgerVariable), ledger);
    module->setProcessEnvironment(environment);
    module->start(program, QStringList{QStringLiteral("trades"), QStringLiteral("--json")} + options);
}

QString cannotBeRead(const QString &ledger, const QString &reason)
{
    return text("the trades of ledger %1 could not be read: %2").arg(Trading::shownLedger(ledger), reason);
}

/// Why a listing did not come to its end; empty when it did.
QString problemOf(QProcess *module, const QString &ledger)
{
    constexpr std::chrono::milliseconds patience{30000};
    const bool hasEnded = module->state() == QProcess::NotRunning ||
                          module->waitForFinished(static_cast<int>(patience.count()));
    if (hasEnded && module->error() == QProcess::UnknownError &&
        module->exitStatus() == QProcess::NormalExit && module->exitCode() == 0) {
        return {};
    }
    const QString reason = QString::fromUtf8(module->readAllStandardError()).trimmed();
    return cannotBeRead(ledger, reason.isEmpty() ? module->errorString() : reason);
}

/// Takes the trades of a list that comes in pieces, a trade on each line.
class FillLines
{
public:
    void take(const QByteArray &piece)
    {
        m_rest += piece;
        const QByteArray lines = m_rest.left(m_rest.lastIndexOf('\n') + 1);
        m_rest.remove(0, lines.size());
        for (QByteArray line : lines.split('\n')) {
            if (line.endsWith(',')) {
                line.chop(1);
            }
            if (const auto fill = fillIn(QJsonDocument::fromJson(line).object())) {
                m_fills[fill->first].push_back(fill->second);
            }
        }
    }
    const FillsBySecurity &fills() const { return m_fills; }

private:
    QByteArray m_rest; // of a line that has not come whole
    FillsBySecurity m_fills;
};

} // namespace

std::optional<Fills> fillsIn(const QByteArray &json, const Trading::SecurityId &security)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isArray()) {
        return std::nullopt;
    }
    Fills fills;
    for (const auto &row : document.array()) {
        const auto fill = fillIn(row.toObject());
        if (fill && fill->first == security) {
            fills.push_back(fill->second);
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
    QProcess module;
    startListing(&module, moduleProgram, ledger, {QStringLiteral("--code"), security.code});
    const QString problem = problemOf(&module, ledger);
    if (!problem.isEmpty()) {
        return Loaded<Fills>::failure(problem);
    }
    const auto fills = fillsIn(module.readAllStandardOutput(), security);
    return fills ? Loaded<Fills>(*fills) : Loaded<Fills>::failure(cannotBeRead(ledger, moduleProgram));
}

Loaded<FillsBySecurity> allLedgerFills(const QString &moduleProgram, const QString &ledger)
{
    constexpr std::chrono::milliseconds patience{30000};
    QProcess module;
    startListing(&module, moduleProgram, ledger, {});
    FillLines lines;
    while (module.waitForReadyRead(static_cast<int>(patience.count()))) {
        lines.take(module.readAllStandardOutput());
    }
    const QString problem = problemOf(&module, ledger);
    lines.take(module.readAllStandardOutput());
    return problem.isEmpty() ? Loaded<FillsBySecurity>(lines.fills())
                             : Loaded<FillsBySecurity>::failure(problem);
}

} // namespace Terminal
