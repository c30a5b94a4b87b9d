#pragma once

#include <QProcess>
#include <QString>
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

    void createDatabase(const QString &name);
    void dropDatabase(const QString &name);

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

    QTemporaryDir m_directory;
    QProcess m_server;
};
