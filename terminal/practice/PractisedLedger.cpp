#include "terminal/practice/PractisedLedger.h"

#include "terminal/services/ChildProcess.h"
#include "trading/HiddenPasswords.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <chrono>

namespace Terminal {

namespace {

constexpr std::chrono::milliseconds patience = std::chrono::seconds(20);

QString textOf(const QJsonObject &row, const char *key, QChar without)
{
    return row.value(QLatin1String(key)).toString().remove(without);
}

} // namespace

Loaded<PractisedLedger> readPractisedLedger(const QString &ledger, const QString &moduleProgram,
                                            const QString &language)
{
    ChildProcess module;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(Trading::ledgerVariable), ledger);
    module.setProcessEnvironment(environment);
    module.start(moduleProgram,
                 {QStringLiteral("--lang"), language, QStringLiteral("practice"), QStringLiteral("--json")});
    const bool hasEnded = module.waitForFinished(static_cast<int>(patience.count()));
    const bool isTold = hasEnded && module.exitStatus() == QProcess::NormalExit && module.exitCode() == 0;
    if (!hasEnded) {
        module.kill();
        module.waitForFinished();
    }
    const auto row = QJsonDocument::fromJson(module.readAllStandardOutput()).array().first().toObject();
    const auto day = Trading::TradingDate::ofText(textOf(row, "day", QLatin1Char('-')));
    if (!isTold || !day) {
        const QString words = QString::fromUtf8(module.readAllStandardError()).simplified();
        return Loaded<PractisedLedger>::failure(words.isEmpty() ? module.errorString() : words);
    }
    return PractisedLedger{*day, Trading::ClockTime::ofText(textOf(row, "time", QLatin1Char(':')))};
}

} // namespace Terminal
