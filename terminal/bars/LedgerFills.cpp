#include "terminal/bars/LedgerFills.h"

#include "trading/HiddenPasswords.h"
#include "trading/LedgerAddress.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <chrono>

namespace Terminal {

namespace {

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
    const bool hasStarted =
        module->error() != QProcess::FailedToStart; // a wait that was too short is an error, too
    if (hasStarted && module->exitStatus() == QProcess::NormalExit && module->exitCode() == 0) {
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
        for (const QByteArray &line : lines.split('\n')) {
            takeLine(line.trimmed());
        }
    }
    /// Nothing of a list that has no begin or no end.
    std::optional<FillsBySecurity> finish()
    {
        takeLine(m_rest.trimmed());
        return m_hasBegun && m_hasEnded ? std::optional(std::move(m_fills)) : std::nullopt;
    }

private:
    void takeLine(QByteArray line)
    {
        if (!m_hasBegun && line.startsWith('[')) {
            m_hasBegun = true;
            line.remove(0, 1);
        }
        if (line.endsWith(']')) {
            m_hasEnded = true;
            line.chop(1);
        } else if (line.endsWith(',')) {
            line.chop(1);
        }
        if (const auto fill = fillIn(QJsonDocument::fromJson(line).object())) {
            m_fills[fill->first].push_back(fill->second);
        }
    }

    QByteArray m_rest; // of a line that has not come whole
    bool m_hasBegun = false;
    bool m_hasEnded = false;
    FillsBySecurity m_fills;
};

/// Reads what a module lists until it ends. False when `goesOn` has said no, or nothing has come for long.
bool readListing(QProcess *module, FillLines *lines, const GoesOn &goesOn)
{
    constexpr std::chrono::milliseconds pause{50}; // a user who cancels waits no longer
    constexpr std::chrono::milliseconds patience{30000};
    QElapsedTimer sinceWord;
    sinceWord.start();
    while (module->state() != QProcess::NotRunning) {
        if (module->waitForReadyRead(static_cast<int>(pause.count()))) {
            lines->take(module->readAllStandardOutput());
            sinceWord.start();
        }
        if (!goesOn() || sinceWord.hasExpired(patience.count())) {
            module->kill();
            module->waitForFinished();
            return false;
        }
    }
    lines->take(module->readAllStandardOutput());
    return true;
}

} // namespace

std::optional<FillsBySecurity> fillsIn(const QByteArray &json)
{
    FillLines lines;
    lines.take(json);
    return lines.finish();
}

QString missingLedger(const QString &ledger)
{
    return Trading::isDatabaseAddress(ledger) || QFileInfo::exists(ledger)
               ? QString()
               : text("the trades of ledger %1 could not be read: %2")
                     .arg(ledger, text("there is no such file"));
}

Loaded<FillsBySecurity> ledgerFills(const QString &moduleProgram, const QString &ledger, const QString &code,
                                    const GoesOn &goesOn)
{
    QProcess module;
    startListing(&module, moduleProgram, ledger,
                 code.isEmpty() ? QStringList() : QStringList({QStringLiteral("--code"), code}));
    FillLines lines;
    if (!readListing(&module, &lines, goesOn)) {
        return Loaded<FillsBySecurity>::failure(
            cannotBeRead(ledger, text("it took too long, or was stopped")));
    }
    const QString problem = problemOf(&module, ledger);
    const auto fills = problem.isEmpty() ? lines.finish() : std::nullopt;
    return fills ? Loaded<FillsBySecurity>(*fills)
                 : Loaded<FillsBySecurity>::failure(problem.isEmpty() ? cannotBeRead(ledger, moduleProgram)
                                                                      : problem);
}

} // namespace Terminal
