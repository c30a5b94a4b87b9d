#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <atomic>
#include <thread>

/// Stands between a program and a PostgreSQL server and counts the messages of both; one of them can meet a
/// fault.
class MessageProxy
{
public:
    enum class Fault {
        Cut,        ///< the connection ends in its place; another one can be made
        CutForLong, ///< and no other one can, until it is mended
        Delay,      ///< it comes late
        Freeze,     ///< nothing goes through any more, and after a while the connection ends
        LoseWay,    ///< nothing more goes through on its way; the other way stays for a while, then the
                    ///< connection ends
    };

    /// `server` is the directory of the server's socket.
    explicit MessageProxy(const QString &server);
    ~MessageProxy();
    Q_DISABLE_COPY_MOVE(MessageProxy)

    /// To be used in the place of the server's directory.
    QString directory() const { return m_directory.path(); }

    /// The n-th message from now on, of whichever connection; the first is 1.
    void failAt(int message, Fault fault);
    /// How many there were since then.
    int messages() const { return m_messages; }
    /// True when one of them has met the fault.
    bool hasFailed() const { return m_hasFailed; }
    /// Nothing fails any more.
    void mend();

private:
    /// From the program to the server, or back.
    struct Way
    {
        int from = -1;
        int to = -1;
        QByteArray unread;       ///< the beginning of a message
        bool isGreeting = false; ///< the next message has no letter before its length
        bool isLost = false;
    };

    void serve();
    void forward(int client);
    bool pass(Way *way);
    bool passMessage(Way *way, const QByteArray &message);
    bool isNextToFail();

    const QString m_server;
    QTemporaryDir m_directory;
    const int m_listener;
    std::atomic<Fault> m_fault{Fault::Cut};
    std::atomic<int> m_failing{0};
    std::atomic<int> m_messages{0};
    std::atomic<bool> m_hasFailed{false};
    std::atomic<bool> m_isAway{false};
    std::atomic<bool> m_ends{false};
    std::thread m_thread;
};
