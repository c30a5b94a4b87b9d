#pragma once

#include <QString>
#include <QTemporaryDir>

#include <atomic>
#include <thread>

/// Stands between a program and a PostgreSQL server, and can fail at the worst moment: when a commit is asked
/// for or answered.
class CommitProxy
{
public:
    enum class Fault {
        None,
        LoseAnswer,  ///< the server commits; the connection breaks before its answer is through
        LoseQuestion ///< the connection breaks before the server hears of the commit
    };

    /// `server` is the directory of the server's socket.
    explicit CommitProxy(const QString &server);
    ~CommitProxy();
    Q_DISABLE_COPY_MOVE(CommitProxy)

    /// To be used in the place of the server's directory.
    QString directory() const { return m_directory.path(); }

    /// What becomes of the next commit, once.
    void fail(Fault fault) { m_fault = fault; }
    /// As long as it is away, connections are closed as soon as they are made.
    void setAway(bool isAway) { m_isAway = isAway; }

private:
    void serve();
    void forward(int client) const;

    const QString m_server;
    QTemporaryDir m_directory;
    const int m_listener;
    mutable std::atomic<Fault> m_fault{Fault::None};
    mutable std::atomic<bool> m_isAway{false};
    std::atomic<bool> m_ends{false};
    std::thread m_thread;
};
