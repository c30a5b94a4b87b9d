#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A PostgreSQL server of the test program's own: a fresh cluster in a temporary directory that listens
/// on a Unix socket in it and nowhere else. Started when first asked for, stopped by its process id.
class PostgreSqlServer
{
public:
    static PostgreSqlServer &instance();

    /// Where the server's programs are; empty when PostgreSQL is not installed.
    static QString programDirectory();

    /// Of the ledger in a database.
    QString location(const QString &database) const;

    /// An empty database for the time of a test.
    QString takeDatabase();
    /// Ends whoever is connected to it.
    void giveDatabaseBack(const QString &name);

    /// How many other connections of a database are inside a transaction that wrote something.
    int writingConnections(const QString &database);

    void stop();
    /// Returns when it takes connections. What was connected before is not any more.
    void start();

private:
    PostgreSqlServer();
    QString dataDirectory() const { return m_directory.filePath(QStringLiteral("data")); }
    QString program(const char *name) const;
    void run(const QString &sql);
    bool empty(const QString &database) const;

    /// In memory where that can be had: databases are made and dropped all the time.
    QTemporaryDir m_directory;
    QStringList m_emptyDatabases; ///< of earlier tests
    int m_madeDatabases = 0;
    QProcess m_server;
};
