#include "terminal/practice/PracticeProgress.h"

#include "terminal/practice/PracticeSession.h"
#include "terminal/services/ChildProcess.h"
#include "trading/HiddenPasswords.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <chrono>

namespace Terminal {

namespace {

constexpr std::chrono::milliseconds patience = std::chrono::seconds(20);

} // namespace

Loaded<std::optional<Trading::ClockTime>> practiceProgress(const PracticeSession &session,
                                                           const QString &moduleProgram)
{
    ChildProcess module;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(Trading::ledgerVariable), session.ledger());
    module.setProcessEnvironment(environment);
    module.start(moduleProgram, {QStringLiteral("practice"), QStringLiteral("--json")});
    const bool hasEnded = module.waitForFinished(static_cast<int>(patience.count()));
    if (!hasEnded || module.exitStatus() != QProcess::NormalExit || module.exitCode() != 0) {
        module.kill();
        module.waitForFinished();
        const QString words = QString::fromUtf8(module.readAllStandardError()).simplified();
        return Loaded<std::optional<Trading::ClockTime>>::failure(
            QCoreApplication::translate("PracticeSessions", "The practice \"%1\" cannot be continued: %2")
                .arg(session.name, words.isEmpty() ? module.errorString() : words));
    }
    const QJsonObject row =
        QJsonDocument::fromJson(module.readAllStandardOutput()).array().first().toObject();
    const QString time = row.value(QStringLiteral("time")).toString().remove(QLatin1Char(':'));
    return Trading::ClockTime::ofText(time);
}

} // namespace Terminal
