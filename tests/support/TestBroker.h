#pragma once

#include "tests/support/WaitUntil.h"

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A real broker of the test's own: mosquitto on a Unix socket in a temporary directory, with the
/// faults a test needs. Ended, by its process id, when the object goes.
///
///     TestBroker broker;                      // runs and answers
///     endPoint.connect(broker.address());     // the directory has an endpoint.ini that points here
///     broker.kill();  broker.start();         // as after a crash: the socket file is left behind
///     broker.freeze(); broker.thaw();         // takes connections but answers nothing
///
/// A test fails (and says why) when the broker cannot be started.
class TestBroker
{
public:
    enum class Begin { Running, NotStarted };

    explicit TestBroker(Begin begin = Begin::Running);
    ~TestBroker();
    Q_DISABLE_COPY_MOVE(TestBroker)

    /// The directory to connect an endpoint to, or to hand to a program as its bus.
    QString address() const { return m_address.path(); }
    QString socketPath() const;

    /// Adds a line `key=value` to the group [bus] of endpoint.ini.
    void setBusKey(const QString &key, const QString &value);

    /// Replaces the lines of mosquitto's configuration after the listener's; before start().
    void setConfiguration(const QStringList &lines) { m_configuration = lines; }

    /// Returns when the broker takes connections.
    void start();
    void kill();     ///< SIGKILL: no goodbye, the socket file stays
    void shutDown(); ///< SIGTERM
    void freeze();   ///< SIGSTOP
    void thaw();     ///< SIGCONT
    qint64 processId() const { return m_process.processId(); }

    /// What the broker wrote into its log so far.
    QString log();

private:
    void writeConfiguration();

    QTemporaryDir m_address;
    QTemporaryDir m_directory;
    QStringList m_busLines;
    QStringList m_configuration;
    QProcess m_process;
    QString m_log;
};
