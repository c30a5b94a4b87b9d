#include "tests/trademodule/support/PostgreSqlServer.h"

#include "tests/support/TestBroker.h"
#include "trademodule/Error.h"
#include "trademodule/ledger/Database.h"

#include <gtest/gtest.h>

#include <QDeadlineTimer>
#include <QDir>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QThread>

#include <csignal>

#include <pwd.h>
#include <unistd.h>

namespace {

const char *const superUser = "postgres";

/// PostgreSQL refuses to run as root: there it runs as the user its package made.
bool isRoot()
{
    return geteuid() == 0;
}

QStringList asServerUser(const QStringList &command)
{
    if (!isRoot()) {
        return command;
    }
    return QStringList{QStringLiteral("setpriv"), QStringLiteral("--reuid=postgres"),
                       QStringLiteral("--regid=postgres"), QStringLiteral("--clear-groups")} +
           command;
}

void giveToServerUser(const QString &directory)
{
    const passwd *user = isRoot() ? getpwnam(superUser) : nullptr;
    if (user != nullptr) {
        EXPECT_EQ(chown(directory.toLocal8Bit().constData(), user->pw_uid, user->pw_gid), 0);
    }
}

/// False when one of those who are connected to the same database stands still.
bool endOthers(TradeModule::Database *connection)
{
    const QDeadlineTimer deadline(std::chrono::seconds(5));
    for (;;) {
        TradeModule::Rows others = connection->run(
            QStringLiteral("SELECT count(CASE WHEN datname = current_database() AND pid <> pg_backend_pid() "
                           "THEN pg_terminate_backend(pid) END) FROM pg_stat_activity"));
        if (!others.next() || others.value(0).toInt() == 0) {
            return true;
        }
        if (deadline.hasExpired()) {
            return false;
        }
        QThread::msleep(1);
    }
}

/// In memory, unless little of it may be used, as in many containers.
QString folderName()
{
    constexpr qint64 enough = qint64(2) << 30;
    const QStorageInfo memory(QStringLiteral("/dev/shm"));
    const bool isRoomy = memory.fileSystemType() == "tmpfs" && memory.bytesAvailable() > enough;
    return (isRoomy ? memory.rootPath() : QDir::tempPath()) + QStringLiteral("/postgresql-XXXXXX");
}

class StopServer : public ::testing::Environment
{
public:
    void TearDown() override { PostgreSqlServer::instance().stop(); }
};

} // namespace

PostgreSqlServer &PostgreSqlServer::instance()
{
    static PostgreSqlServer server;
    return server;
}

QString PostgreSqlServer::programDirectory()
{
    QStringList candidates{QStringLiteral("/opt/homebrew/opt/postgresql@15/bin"),
                           QStringLiteral("/usr/local/opt/postgresql@15/bin")};
    const QDir debian(QStringLiteral("/usr/lib/postgresql"));
    for (const QString &version : debian.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        candidates.prepend(debian.filePath(version + QStringLiteral("/bin")));
    }
    const QString initdb = QStandardPaths::findExecutable(QStringLiteral("initdb"), candidates);
    return initdb.isEmpty() ? QString() : QFileInfo(initdb).path();
}

QString PostgreSqlServer::program(const char *name) const
{
    return programDirectory() + QLatin1Char('/') + QLatin1String(name);
}

PostgreSqlServer::PostgreSqlServer() : m_directory(folderName())
{
    ::testing::AddGlobalTestEnvironment(new StopServer);
    giveToServerUser(m_directory.path());
    QStringList initdb =
        asServerUser({program("initdb"), QStringLiteral("-D"), dataDirectory(), QStringLiteral("-A"),
                      QStringLiteral("trust"), QStringLiteral("-U"), QLatin1String(superUser),
                      QStringLiteral("-E"), QStringLiteral("UTF8"), QStringLiteral("--no-sync")});
    const QString first = initdb.takeFirst();
    QProcess making;
    making.setWorkingDirectory(QStringLiteral("/"));
    making.start(first, initdb);
    EXPECT_TRUE(making.waitForFinished(60000) && making.exitCode() == 0)
        << making.readAllStandardError().toStdString();
    start();
}

void PostgreSqlServer::start()
{
    QStringList server = asServerUser(
        {program("postgres"), QStringLiteral("-D"), dataDirectory(), QStringLiteral("-k"), m_directory.path(),
         QStringLiteral("-c"), QStringLiteral("listen_addresses="), QStringLiteral("-c"),
         QStringLiteral("fsync=off"), QStringLiteral("-c"), QStringLiteral("full_page_writes=off")});
    const QString first = server.takeFirst();
    m_server.setWorkingDirectory(QStringLiteral("/"));
    m_server.setStandardErrorFile(m_directory.filePath(QStringLiteral("log")));
    m_server.start(first, server);
    EXPECT_TRUE(m_server.waitForStarted()) << m_server.errorString().toStdString();
    const bool isUp = waitUntil([this] {
        return QProcess::execute(program("pg_isready"),
                                 {QStringLiteral("-q"), QStringLiteral("-h"), m_directory.path()}) == 0;
    });
    EXPECT_TRUE(isUp) << "PostgreSQL does not start in " << m_directory.path().toStdString();
}

void PostgreSqlServer::stop()
{
    if (m_server.state() == QProcess::Running) {
        ::kill(static_cast<pid_t>(m_server.processId()), SIGINT); // ends connections, then itself
        EXPECT_TRUE(m_server.waitForFinished(30000));
    }
}

QString PostgreSqlServer::location(const QString &database) const
{
    return QStringLiteral("postgresql://%1@/%2?host=%3")
        .arg(QLatin1String(superUser), database, m_directory.path());
}

void PostgreSqlServer::run(const QString &sql)
{
    TradeModule::Database(location(QStringLiteral("postgres"))).run(sql);
}

QString PostgreSqlServer::takeDatabase()
{
    if (!m_emptyDatabases.isEmpty()) {
        return m_emptyDatabases.takeLast();
    }
    const QString name = QStringLiteral("ledger%1").arg(++m_madeDatabases);
    run(QStringLiteral("CREATE DATABASE ") + name);
    return name;
}

/// To make one and to drop it takes much longer than to empty it. One that cannot be emptied, since a test
/// has left something in it that stands still, is gone with the server.
void PostgreSqlServer::giveDatabaseBack(const QString &name)
{
    try {
        if (empty(name)) {
            m_emptyDatabases.append(name);
        }
    } catch (const TradeModule::Error &error) {
        ADD_FAILURE() << error.what();
    }
}

/// False when somebody connected to it does not leave.
bool PostgreSqlServer::empty(const QString &database) const
{
    TradeModule::Database connection(location(database));
    connection.run(QStringLiteral("SET SESSION CHARACTERISTICS AS TRANSACTION READ WRITE"));
    if (!endOthers(&connection)) {
        return false;
    }
    connection.run(QStringLiteral("DO $$ DECLARE schema name; BEGIN "
                                  "EXECUTE format('ALTER DATABASE %I RESET ALL', current_database()); "
                                  "FOR schema IN SELECT nspname FROM pg_namespace "
                                  "WHERE nspname NOT LIKE 'pg\\_%' AND nspname <> 'information_schema' LOOP "
                                  "EXECUTE format('DROP SCHEMA %I CASCADE', schema); END LOOP; "
                                  "CREATE SCHEMA public AUTHORIZATION pg_database_owner; GRANT USAGE ON "
                                  "SCHEMA public TO PUBLIC; END $$"));
    return true;
}

int PostgreSqlServer::writingConnections(const QString &database)
{
    TradeModule::Database connection(location(QStringLiteral("postgres")));
    TradeModule::Rows rows =
        connection.run(QStringLiteral("SELECT count(*) FROM pg_stat_activity WHERE datname = ? "
                                      "AND backend_xid IS NOT NULL "
                                      "AND query LIKE 'EXECUTE%'"),
                       {database});
    return rows.next() ? rows.value(0).toInt() : 0;
}
