#include "terminal/practice/PracticeSessions.h"

#include "terminal/practice/PracticeLock.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUuid>

#include <algorithm>

namespace Terminal {

namespace {

/// Names of folders that are no sessions, yet or any more, begin so.
constexpr QLatin1Char hidden('.');

QString text(const char *source)
{
    return QCoreApplication::translate("PracticeSessions", source);
}

void removeFolder(const QString &folder)
{
    QDir(folder).removeRecursively();
}

} // namespace

PracticeSessions PracticeSessions::ofUser()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    return PracticeSessions(QDir(folder).filePath(QStringLiteral("practice")));
}

std::vector<PracticeSession> PracticeSessions::all() const
{
    std::vector<PracticeSession> sessions;
    const QDir folder(m_folder);
    const QStringList names = folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot); // hidden ones left out
    for (const QString &name : names) {
        if (auto session = readSession(folder.filePath(name))) {
            sessions.push_back(std::move(*session));
        }
    }
    std::stable_sort(
        sessions.begin(), sessions.end(),
        [](const PracticeSession &a, const PracticeSession &b) { return a.begunAt > b.begunAt; });
    return sessions;
}

std::optional<PracticeSession> PracticeSessions::find(const QString &name) const
{
    return readSession(folderOf(name));
}

/// Any text is a name, but not one of a folder.
QString PracticeSessions::folderOf(const QString &name) const
{
    const QByteArray digest = QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha256).toHex();
    return QDir(m_folder).filePath(QString::fromLatin1(digest.left(16)));
}

QString PracticeSessions::freeName(const QString &wished) const
{
    QString name = wished;
    for (int number = 2; find(name); ++number) {
        name = QStringLiteral("%1 (%2)").arg(wished).arg(number);
    }
    return name;
}

void PracticeSessions::removeLeftovers() const
{
    const QDateTime recently = QDateTime::currentDateTime().addDays(-1);
    const QFileInfoList folders =
        QDir(m_folder).entryInfoList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QFileInfo &folder : folders) {
        if (folder.fileName().startsWith(hidden) && folder.lastModified() < recently) {
            removeFolder(folder.filePath());
        }
    }
}

QString PracticeSessions::makeRoom() const
{
    removeLeftovers();
    const QString room = QDir(m_folder).filePath(hidden + QUuid::createUuid().toString(QUuid::WithoutBraces));
    return QDir().mkpath(room) ? room : QString();
}

QString PracticeSessions::take(PracticeSession session) const
{
    const QString room = session.folder;
    const QString place = folderOf(session.name);
    const bool isThere = find(session.name).has_value();
    if (!isThere) {
        removeFolder(place); // what is no session is in the way
    }
    const bool isWhole = QFile::copy(session.ledger(), session.begunLedger()) && writeSession(session);
    if (isWhole && !isThere && QDir().rename(room, place)) {
        return {};
    }
    giveUp(room);
    return isThere ? text("There is a practice \"%1\" already: give this one another name.").arg(session.name)
                   : text("The practice cannot be kept: %1 cannot be written.").arg(place);
}

void PracticeSessions::giveUp(const QString &room) const
{
    removeFolder(room);
}

/// The ledger is put in place as a whole; what SQLite keeps beside it is of the one before.
QString PracticeSessions::restart(const PracticeSession &session) const
{
    const QString fresh = session.ledger() + QStringLiteral(".new");
    QFile::remove(fresh);
    bool isDone = QFile::copy(session.begunLedger(), fresh);
    for (const char *const beside : {"-wal", "-shm", "-journal", ""}) {
        const QString file = session.ledger() + QLatin1String(beside);
        isDone = isDone && (!QFile::exists(file) || QFile::remove(file));
    }
    isDone = isDone && QFile::rename(fresh, session.ledger());
    return isDone ? QString()
                  : text("The practice cannot be begun again: %1 cannot be written.").arg(session.ledger());
}

QString PracticeSessions::remove(const PracticeSession &session) const
{
    PracticeLock lock(session);
    if (!lock.acquire()) {
        return lock.problem();
    }
    const QString gone = QDir(m_folder).filePath(hidden + QUuid::createUuid().toString(QUuid::WithoutBraces));
    if (!QDir().rename(session.folder, gone)) {
        return text("The practice cannot be deleted: %1 cannot be changed.").arg(session.folder);
    }
    removeFolder(gone);
    return {};
}

} // namespace Terminal
