#pragma once

#include <QByteArrayList>
#include <QProcess>
#include <QString>
#include <QStringList>

class TestBroker;

/// The broker's own command-line clients, mosquitto_sub, _pub and _rr: what travels is tested by programs
/// that know nothing of ours. Topics are paths as on the wire.
class WireClients
{
public:
    /// The broker stays the caller's and outlives this object.
    explicit WireClients(const TestBroker &broker);
    ~WireClients();
    Q_DISABLE_COPY_MOVE(WireClients)

    static bool areInstalled();

    /// Hears everything from its return on.
    void listen();

    /// What has been heard and not been taken yet; each message is a line "PATH PAYLOAD".
    QByteArrayList takeHeard();

    void say(const QString &path, const QByteArray &payload) const { publish(path, payload, "-s"); }

    /// Says each line on its own.
    void sayLines(const QString &path, const QByteArray &lines) const { publish(path, lines, "-l"); }

    /// Asks as MQTT 5's request/response does. Empty without an answer within a second.
    QByteArray ask(const QString &path, const QByteArray &question) const;

private:
    void publish(const QString &path, const QByteArray &input, const char *mode) const;
    QStringList toBroker() const;

    const TestBroker &m_broker;
    QProcess m_ear;
};
