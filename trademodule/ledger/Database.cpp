#include "trademodule/ledger/Database.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/SharedTypes.h"

#include "trademodule/ledger/DatabaseFailure.h"
#include "trademodule/ledger/NameServer.h"
#include "trademodule/ledger/PostgreSqlAddress.h"
#include "trademodule/ledger/ServerProbe.h"
#include "trademodule/ledger/StatementWatch.h"
#include "trading/LedgerAddress.h"

#include <QFile>
#include <QFileInfo>
#include <QLibrary>
#include <QRandomGenerator>
#include <QSqlDriver>
#include <QSqlError>
#include <QThread>
#include <QUrl>
#include <QUuid>
#include <QtDebug>

#include <algorithm>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h> // permissions of a new file: POSIX, the same on Linux and macOS

namespace TradeModule {

namespace {

using namespace std::chrono_literals;

/// Known to every process that changes ledgers on PostgreSQL: do not change.
constexpr qint64 writerLock = 0x74726164656d6f64;

/// How long a server is waited for that takes a connection and says nothing, or a host that takes none.
constexpr std::chrono::seconds longestConnecting = 5s;

/// How long a commit that was not answered is asked after, at most.
constexpr std::chrono::seconds longestDoubt = 10s;
constexpr std::chrono::milliseconds betweenQuestions = 20ms;

/// How many days it can be found out what became of a change.
constexpr int longestRemembered = 30;

/// The least that both databases take for a time to wait.
constexpr std::chrono::milliseconds noPatience = 1ms;

/// How much of a SQLite ledger is mapped into memory; what is beyond is read.
constexpr qint64 mappedBytes = qint64(1) << 30;

QString driverOf(Database::Kind kind)
{
    switch (kind) {
    case Database::Kind::Sqlite:
        return QStringLiteral("QSQLITE");
    case Database::Kind::PostgreSql:
        return QStringLiteral("QPSQL");
    }
    Q_UNREACHABLE();
}

/// A ledger is its owner's alone, and what SQLite lays beside it gets the same permissions; SQLite itself
/// would let everybody read. A file that is there is not touched: to close it drops the locks that another
/// connection of this process holds on it.
void makePrivateFile(const QString &file)
{
    if (!Database::keeps(file)) {
        return;
    }
    const QFileInfo info(file);
    const QByteArray path = QFile::encodeName(info.isSymLink() ? info.symLinkTarget() : file);
    const int descriptor = ::open(path.constData(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor >= 0) {
        ::close(descriptor);
    }
}

/// True when the first value of the first row is true.
bool isTrue(Rows rows)
{
    return rows.next() && rows.value(0).toBool();
}

/// True when an existing file may be read only, or nothing may be laid beside it, as every change needs.
bool isReadOnlyFile(const QString &file)
{
    const QFileInfo info(QFileInfo(file).canonicalFilePath());
    return info.exists() && !(info.isWritable() && QFileInfo(info.path()).isWritable());
}

/// The descriptor of a server's connection, by its client library, which Qt's driver has loaded; below 0 when
/// that cannot be asked. Nobody watches such a connection.
int socketOf(const QSqlDatabase &connection)
{
    using PQsocket = int (*)(const void *);
    static const auto descriptorOf =
        reinterpret_cast<PQsocket>(QLibrary::resolve(QStringLiteral("pq"), 5, "PQsocket"));
    const QVariant handle = connection.driver()->handle();
    const bool isKnown = descriptorOf != nullptr && qstrcmp(handle.typeName(), "PGconn*") == 0;
    return isKnown ? descriptorOf(*static_cast<void *const *>(handle.constData())) : -1;
}

} // namespace

namespace {

/// In the words of the database, without those of the driver, which say nothing more.
QString reasonOf(const QSqlError &error)
{
    const QString words = error.databaseText().trimmed();
    return words.isEmpty() ? error.driverText().trimmed() : words;
}

/// A mistyped scheme is no file's name, and what follows it may be a password.
void refuseOtherScheme(const QString &location)
{
    const int end = location.indexOf(QLatin1String("://"));
    if (end > 0 && !Trading::isDatabaseAddress(location)) {
        throw LedgerError(
            translated("the ledger's address begins with \"%1://\": only postgresql:// can be used")
                .arg(location.left(end)));
    }
}

} // namespace

bool Database::keeps(const QString &location)
{
    return !location.isEmpty() && location != QLatin1String(":memory:");
}

Database::Kind Database::kindOf(const QString &location)
{
    return Trading::isDatabaseAddress(location) ? Kind::PostgreSql : Kind::Sqlite;
}

Database::Database(const QString &location)
    : m_location(location),
      m_kind(kindOf(location)),
      m_name(QUuid::createUuid().toString())
{
    refuseOtherScheme(location);
    if (!QSqlDatabase::isDriverAvailable(driverOf(m_kind))) {
        throw LedgerError(translated("Qt's database driver %1 is not installed").arg(driverOf(m_kind)));
    }
    QSqlDatabase::addDatabase(driverOf(m_kind), m_name);
    try {
        open();
    } catch (const Error &) {
        QSqlDatabase::removeDatabase(m_name);
        throw;
    }
}

Database::~Database()
{
    connection().close();
    QSqlDatabase::removeDatabase(m_name);
}

QSqlDatabase Database::connection() const
{
    return QSqlDatabase::database(m_name, false);
}

void Database::open()
{
    ++m_openings;
    m_isLost = false;
    m_wasHungUp = false;
    m_kind == Kind::Sqlite ? openSqlite(m_location) : openPostgreSql(PostgreSqlAddress(m_location));
    m_wasWritable = m_wasWritable || !m_isReadOnly;
}

void Database::reconnectAside()
{
    if (m_kind == Kind::PostgreSql) {
        m_probe = std::make_unique<ServerProbe>(PostgreSqlAddress(m_location));
    }
}

/// Only a server ends connections: a file stays open, unless it was written under who thought nobody would.
void Database::reopenIfLost()
{
    if (hasChanged()) {
        connection().close();
        open();
        return;
    }
    if (m_isInTransaction || (connection().isOpen() && !m_isLost)) {
        return;
    }
    if (m_probe && !std::exchange(m_mayReopen, false) && !m_probe->hasAnswered()) {
        throw LedgerUnavailable(translated("the ledger's database is away; it is tried again and again"));
    }
    connection().close();
    open();
    tellOfReconnection();
    qWarning("%s", qUtf8Printable(
                       translated("the connection to the ledger's database was lost; it is there again")));
}

void Database::tellOfReconnection()
{
    try {
        if (m_reconnected) {
            m_reconnected();
        }
    } catch (const Error &) {
        connection().close();
        throw;
    }
}

void Database::openSqlite(const QString &file)
{
    m_unchanging.reset();
    m_isReadOnly = isReadOnlyFile(file);
    m_isReadOnly ? openReadOnlySqlite(file) : openWritableSqlite(file);
    m_file = FileIdentity::of(file);
    // a security's rows are spread over the file: read them where they lie
    run(QStringLiteral("PRAGMA mmap_size = %1").arg(mappedBytes));
}

void Database::openWritableSqlite(const QString &file)
{
    makePrivateFile(file);
    QSqlDatabase database = connection();
    database.setConnectOptions(); // those of a ledger that could only be read until now
    database.setDatabaseName(file);
    open(database, file);
    // write-ahead log: readers go on while an import writes
    Rows mode = run(QStringLiteral("PRAGMA journal_mode = WAL"));
    if (keeps(file) && mode.next() && mode.value(0).toString() != QLatin1String("wal")) {
        qWarning("%s", qUtf8Printable(translated("the ledger %1 lies where no write-ahead log can be had: "
                                                 "who reads it waits while another program writes")
                                          .arg(shownLocation())));
    }
    run(QStringLiteral("PRAGMA synchronous = FULL"));
    run(QStringLiteral("PRAGMA foreign_keys = ON"));
}

void Database::openReadOnlySqlite(const QString &file)
{
    QSqlDatabase database = connection();
    database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_OPEN_URI"));
    database.setDatabaseName(QString::fromUtf8(QUrl::fromLocalFile(shownLocation()).toEncoded()));
    if (!database.open() || !QSqlQuery(database).exec(QStringLiteral("SELECT 1 FROM sqlite_master"))) {
        database.close();
        openAsUnchanging(file);
    } else {
        open(database, file);
    }
}

/// Where no file can be laid beside it, not even to read, the ledger is read as what nobody changes. Who has
/// more rights changes it all the same: then it is opened anew.
void Database::openAsUnchanging(const QString &file)
{
    if (QFileInfo(logFile()).size() > 0) {
        throw LedgerUnavailable(translated("the ledger %1 cannot be read by this user as long as another "
                                           "program writes it: its newest changes are in %2")
                                    .arg(shownLocation(), logFile()));
    }
    QSqlDatabase database = connection();
    database.setDatabaseName(database.databaseName() + QStringLiteral("?immutable=1"));
    m_unchanging = FileState::of(file);
    open(database, file);
}

QString Database::logFile() const
{
    return QFileInfo(m_location).canonicalFilePath() + QStringLiteral("-wal");
}

/// What was read of it may be of two times.
bool Database::hasChanged() const
{
    return m_unchanging && (FileState::of(m_location) != *m_unchanging || QFileInfo(logFile()).size() > 0);
}

/// With SQLite how often others have changed it, and how many rows this connection has, counted anew when it
/// is opened anew; with PostgreSQL which transactions can be seen.
QString Database::state()
{
    Rows row =
        run(m_kind == Kind::Sqlite
                ? QStringLiteral("SELECT data_version || ' ' || total_changes() FROM pragma_data_version")
                : QStringLiteral("SELECT CAST(txid_current_snapshot() AS text)"));
    row.next();
    return QStringLiteral("%1 %2").arg(m_openings).arg(row.value(0).toString());
}

void Database::refuseReplacedFile() const
{
    if (!m_file.isThere()) {
        return; // it is no file
    }
    const FileIdentity found = FileIdentity::of(m_location);
    if (!found.isThere()) {
        throw LedgerUnavailable(translated("the ledger %1 is not there any more: it was removed or moved. "
                                           "Nothing was changed")
                                    .arg(shownLocation()));
    }
    if (found != m_file) {
        throw LedgerUnavailable(translated("another file was put in the place of the ledger %1. Nothing was "
                                           "changed; end this program and start it again")
                                    .arg(shownLocation()));
    }
    refuseReplacedLog();
}

/// SQLite goes on with the log that it has open, and moves it into the ledger when the connection is closed.
void Database::refuseReplacedLog() const
{
    const FileIdentity found = FileIdentity::of(logFile());
    if (!m_log.isThere()) {
        m_log = found; // it is made with the first change
    }
    if (found != m_log) {
        throw LedgerUnavailable(
            translated("the file %1, which belongs to the ledger, was removed or replaced. "
                       "Nothing was changed; end this program, which keeps what is in the "
                       "ledger, and start it again")
                .arg(logFile()));
    }
}

QString Database::shownLocation(const QString &location)
{
    return kindOf(location) == Kind::Sqlite ? QFileInfo(location).absoluteFilePath()
                                            : PostgreSqlAddress(location).shown();
}

void Database::openPostgreSql(const PostgreSqlAddress &address)
{
    if (!m_watch) {
        m_watch = std::make_unique<StatementWatch>();
    }
    m_socket = -1;
    if (!address.host().isEmpty() && !address.isUnixSocket() &&
        !nameServerAnswers(address.host(), longestConnecting)) {
        throw LedgerUnavailable(translated("the ledger %1 cannot be opened: %2")
                                    .arg(address.shown(), translated("the name server does not answer")));
    }
    QSqlDatabase database = connection();
    database.setHostName(address.host());
    database.setPort(address.port());
    database.setDatabaseName(address.database());
    database.setUserName(address.user());
    database.setPassword(address.password());
    database.setConnectOptions(
        QStringLiteral("connect_timeout=%1;%2").arg(longestConnecting.count()).arg(address.options()));
    open(database, address.shown());
    run(QStringLiteral("SET client_min_messages = warning"));
    m_isReadOnly = serverOnlyReads();
}

bool Database::serverOnlyReads()
{
    return isTrue(run(QStringLiteral("SELECT current_setting('transaction_read_only')::boolean")));
}

void Database::open(QSqlDatabase connection, const QString &shownLocation)
{
    if (!connection.open()) {
        throw LedgerUnavailable(translated("the ledger %1 cannot be opened: %2")
                                    .arg(shownLocation, reasonOf(connection.lastError())));
    }
    m_socket = m_kind == Kind::PostgreSql ? socketOf(connection) : -1;
    m_wait = 0ms;
    waitAtMost(m_patience);
}

void Database::waitAtMost(std::chrono::milliseconds time)
{
    if (m_wait == time) {
        return;
    }
    const QString sql = m_kind == Kind::Sqlite ? QStringLiteral("PRAGMA busy_timeout = %1")
                                               : QStringLiteral("SET lock_timeout = %1");
    run(sql.arg(time.count()));
    m_wait = time;
}

void Database::refuse(const QSqlQuery &failed)
{
    const bool isClosed = m_kind == Kind::PostgreSql && !connection().isOpen();
    const DatabaseFailure failure = isClosed ? DatabaseFailure::Lost : failureOf(failed.lastError(), m_kind);
    const QString reason = reasonOf(failed.lastError());
    m_isBusy = failure == DatabaseFailure::Busy;
    m_mayBeDone = failure == DatabaseFailure::Lost || failure == DatabaseFailure::DiskFails;
    switch (failure) {
    case DatabaseFailure::Busy:
        throw LedgerUnavailable(
            translated("the ledger is busy: another program is changing it, perhaps with a long import. "
                       "Nothing was changed; try again"));
    case DatabaseFailure::Lost:
        m_isLost = true;
        throw LedgerUnavailable(
            translated("the connection to the ledger's database is lost: %1").arg(reason));
    case DatabaseFailure::CannotNow:
    case DatabaseFailure::DiskFails:
        throw LedgerUnavailable(translated("the ledger's database refused: %1").arg(reason));
    case DatabaseFailure::Refused:
        throw LedgerError(translated("the ledger's database refused: %1").arg(reason));
    }
    Q_UNREACHABLE();
}

/// What could be written before can be again: its server may follow another one for a while.
void Database::refuseReadOnly()
{
    if (m_isReadOnly && m_wasWritable && m_kind == Kind::PostgreSql) {
        m_isReadOnly = serverOnlyReads();
    }
    if (m_isReadOnly) {
        const QString reason = translated("the ledger can only be read: nothing can be changed in it");
        m_wasWritable ? throw LedgerUnavailable(reason) : throw LedgerError(reason);
    }
}

void Database::begin()
{
    refuseReadOnly();
    refuseReplacedFile();
    waitAtMost(m_isBusy ? noPatience : m_patience);
    // SQLite: takes the right to write at once; a later upgrade could fail without waiting
    run(m_kind == Kind::Sqlite ? QStringLiteral("BEGIN IMMEDIATE") : QStringLiteral("BEGIN"));
    m_isInTransaction = true;
    try {
        waitForWriters();
        if (m_guard) {
            m_guard();
        }
    } catch (const Error &) {
        rollback();
        throw;
    }
    m_isBusy = false;
}

/// To the end of the transaction the others wait. Outside of one nobody does; but a change that is asked
/// after, and that is still in progress though who began it has lost the connection, is over then.
void Database::waitForWriters()
{
    if (m_kind == Kind::PostgreSql) {
        run(QStringLiteral("SELECT pg_advisory_xact_lock(%1)").arg(writerLock), {}, Waits::ForOthers);
    }
}

void Database::commit()
{
    refuseReplacedFile();
    leaveMark();
    try {
        run(QStringLiteral("COMMIT"));
        m_isInTransaction = false;
    } catch (const LedgerUnavailable &) {
        if (!m_mayBeDone) {
            throw;
        }
        rollback();
        if (!happened(m_mark)) {
            throw;
        }
    }
    m_confirmedMark = m_mark;
}

void Database::leaveMark()
{
    if (m_marksChanges) {
        m_mark = static_cast<qint64>(QRandomGenerator::system()->generate64() >> 1);
        if (!replaceConfirmedMark()) {
            run(QStringLiteral("INSERT INTO change_mark (mark, made_on) VALUES (%1, %2)")
                    .arg(m_mark)
                    .arg(TradingDate::today().number()));
        }
        removeOldMarks();
    }
}

/// Nobody asks after a change that was confirmed. With a mark for each of them the ledger would grow with
/// every quote. False when it is not there, as with the first change.
bool Database::replaceConfirmedMark()
{
    return m_confirmedMark &&
           runOnce(QStringLiteral("UPDATE change_mark SET mark = %1, made_on = %2 WHERE mark = %3")
                       .arg(m_mark)
                       .arg(TradingDate::today().number())
                       .arg(*m_confirmedMark),
                   {}, Waits::ForNobody)
                   .numRowsAffected() > 0;
}

void Database::removeOldMarks()
{
    if (m_noOldMarks.hasExpired()) {
        run(QStringLiteral("DELETE FROM change_mark WHERE made_on < %1")
                .arg(TradingDate::today().plusDays(-longestRemembered).number()));
        m_noOldMarks.setRemainingTime(24h);
    }
}

/// Asks for a while what became of a commit whose end was not confirmed.
bool Database::happened(qint64 mark)
{
    // of a file nobody's return could be waited for, and who returns knows of no change without a mark
    const bool isWaitedFor = m_kind == Kind::PostgreSql && m_marksChanges;
    const QDeadlineTimer deadline(isWaitedFor ? std::min<std::chrono::milliseconds>(m_patience, longestDoubt)
                                              : 0ms);
    for (;;) {
        try {
            return isCommitted(mark);
        } catch (const LedgerUnavailable &) {
            if (deadline.hasExpired()) {
                throw OutcomeUnknown(
                    translated(
                        "a change was not confirmed by the ledger's database or disk: whether it was made "
                        "is not known yet. Look before you try again"),
                    mark);
            }
        }
        QThread::msleep(betweenQuestions.count());
    }
}

bool Database::isCommitted(qint64 mark)
{
    if (!m_marksChanges) {
        throw LedgerUnavailable(translated("the ledger has no marks of changes yet"));
    }
    waitAtMost(m_patience);
    waitForWriters();
    if (hasMark(mark)) {
        return true;
    }
    m_kind == Kind::Sqlite ? overwriteFailedChange() : refuseWhileBehind();
    return false;
}

bool Database::hasMark(qint64 mark)
{
    return isTrue(run(QStringLiteral("SELECT COUNT(*) > 0 FROM change_mark WHERE mark = %1").arg(mark)));
}

/// What failed may lie in the write-ahead log: nobody sees it there, but who opens the ledger after all have
/// left it would take it for done. The next change takes its place.
void Database::overwriteFailedChange()
{
    run(QStringLiteral("BEGIN IMMEDIATE"));
    m_isInTransaction = true;
    try {
        leaveMark();
        run(QStringLiteral("COMMIT"));
        m_isInTransaction = false;
    } catch (const Error &) {
        rollback();
        throw;
    }
    m_confirmedMark = m_mark;
}

/// A server that follows another one may hear of the change later.
void Database::refuseWhileBehind()
{
    if (isTrue(run(QStringLiteral("SELECT pg_is_in_recovery()")))) {
        throw LedgerUnavailable(translated("the ledger's server still follows another one"));
    }
}

void Database::rollback() noexcept
{
    try {
        if (m_isInTransaction && connection().isOpen() && !m_isLost) {
            run(QStringLiteral("ROLLBACK"));
        }
    } catch (const Error &) { // after some failures the database has done it before
    }
    m_isInTransaction = false;
}

Rows Database::run(const QString &sql, const QVariantList &values)
{
    return run(sql, values, Waits::ForNobody);
}

/// What meets the end of a connection that the server gave up, outside a transaction, has done nothing yet.
Rows Database::run(const QString &sql, const QVariantList &values, Waits waits)
{
    try {
        return Rows(this, runOnce(sql, values, waits));
    } catch (const LedgerUnavailable &) {
        if (!mayReopenAtOnce()) {
            throw;
        }
    }
    return Rows(this, runOnce(sql, values, waits));
}

bool Database::mayReopenAtOnce()
{
    m_mayReopen = m_probe && m_isLost && !m_isInTransaction && std::exchange(m_wasHungUp, false);
    return m_mayReopen;
}

QSqlQuery Database::runOnce(const QString &sql, const QVariantList &values, Waits waits)
{
    if (!values.isEmpty()) {
        QSqlQuery query = prepared(sql);
        run(&query, values);
        return query;
    }
    reopenIfLost();
    QSqlQuery query(connection());
    query.setForwardOnly(true);
    if (!execute([&] { return query.exec(sql); }, waits)) {
        refuse(query);
    }
    return query;
}

QSqlQuery Database::prepared(const QString &sql)
{
    reopenIfLost();
    QSqlQuery query(connection());
    query.setForwardOnly(true);
    if (!execute([&] { return query.prepare(sql); })) {
        refuse(query);
    }
    return query;
}

void Database::run(QSqlQuery *prepared, const QVariantList &values)
{
    for (int i = 0; i < values.size(); ++i) {
        prepared->bindValue(i, values[i]);
    }
    if (!execute([prepared] { return prepared->exec(); })) {
        refuse(*prepared);
    }
}

/// Rows come one by one, so that the disk or the server can fail, or say nothing, before each of them.
bool Database::readNext(QSqlQuery *rows)
{
    const bool isThere = execute([rows] { return rows->next(); });
    if (!isThere && hasChanged()) {
        throw LedgerUnavailable(translated("the ledger was written while it was read: try again"));
    }
    if (!isThere && rows->lastError().isValid()) {
        refuse(*rows);
    }
    return isThere;
}

/// A server that does not answer in time is hung up on.
bool Database::execute(const std::function<bool()> &statement, Waits waits)
{
    if (!m_watch) {
        return statement();
    }
    m_watch->begin(m_socket, m_longestStatement + (waits == Waits::ForOthers ? m_wait : 0ms));
    const bool isDone = statement();
    m_wasHungUp = !m_watch->done();
    return isDone;
}

/// In PostgreSQL in whichever schema is looked into first.
void Database::mapNothing()
{
    if (m_kind == Kind::Sqlite) {
        run(QStringLiteral("PRAGMA mmap_size = 0"));
    }
}

bool Database::hasTable(const QString &name)
{
    const QString sql =
        m_kind == Kind::Sqlite
            ? QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND name = ?")
            : QStringLiteral("SELECT to_regclass(?) IS NOT NULL");
    return isTrue(run(sql, {name}));
}

} // namespace TradeModule
