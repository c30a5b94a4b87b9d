#include "terminal/practice/PracticeSession.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace Terminal {

namespace {

const QString nameKey = QStringLiteral("name");
const QString dataKey = QStringLiteral("data");
const QString codeKey = QStringLiteral("code");
const QString dayKey = QStringLiteral("day");
const QString begunKey = QStringLiteral("begun");

QString descriptionIn(const QString &folder)
{
    return QDir(folder).filePath(QStringLiteral("session.json"));
}

} // namespace

QString PracticeSession::ledger() const
{
    return QDir(folder).filePath(QStringLiteral("account.db"));
}

QString PracticeSession::begunLedger() const
{
    return QDir(folder).filePath(QStringLiteral("begun.db"));
}

QString PracticeSession::lockFile() const
{
    return folder + QStringLiteral(".lock"); // not in it: the folder of one that is deleted is moved
}

bool writeSession(const PracticeSession &session)
{
    const QJsonObject description{{nameKey, session.name},
                                  {dataKey, session.dataFolder},
                                  {codeKey, session.code},
                                  {dayKey, session.day.text()},
                                  {begunKey, session.begunAt.toUTC().toString(Qt::ISODate)}};
    QSaveFile file(descriptionIn(session.folder));
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(description).toJson()) > 0 &&
           file.commit();
}

std::optional<PracticeSession> readSession(const QString &folder)
{
    QFile file(descriptionIn(folder));
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QJsonObject description = QJsonDocument::fromJson(file.readAll()).object();
    const auto day = Trading::TradingDate::ofText(description.value(dayKey).toString());
    if (!day || description.value(nameKey).toString().isEmpty()) {
        return std::nullopt;
    }
    const PracticeSession session{
        description.value(nameKey).toString(),
        folder,
        description.value(dataKey).toString(),
        description.value(codeKey).toString(),
        *day,
        QDateTime::fromString(description.value(begunKey).toString(), Qt::ISODate).toLocalTime()};
    const bool isWhole = QFileInfo::exists(session.ledger()) && QFileInfo::exists(session.begunLedger());
    return isWhole ? std::optional(session) : std::nullopt;
}

} // namespace Terminal
