#pragma once

#include "endpoint/EndPointExport.h"

#include <QByteArray>
#include <QString>

namespace LocalCommunication {

/// Where the bus of a terminal is, and how to get in.
///
/// The directory of the running terminal names the bus instance. A file "endpoint.ini" of the user for that
/// directory, or else one in it, points to a broker; without any the bus is the broker that the terminal
/// starts for itself on a socket of its user's runtime directory, another one for each value of the
/// environment variable TRADEBUS_INSTANCE. docs/bus-protocol.md tells where the files are and lists every
/// key.
struct ENDPOINT_EXPORT BusAddress
{
    /// How a client reaches the broker.
    enum class Transport { UnixSocket, Tcp, Tls };

    /// Looks the address up. Anything wrong is told by `problem`; there is no fall-back.
    static BusAddress ofDirectory(const QString &directory);

    /// True without a problem; the members below tell something only then.
    bool isValid() const { return problem.isEmpty(); }

    /// True when everybody on the way to the broker can read and alter what is said: TCP without TLS to
    /// another machine. The settings have to allow it.
    bool isPlainOverNetwork() const;

    /// For messages to people: "unix:///run/…/bus.sock", "mqtts://host:8883".
    QString toString() const;

    /// Empty, or what is wrong: names the file and the key and says what is expected.
    QString problem;

    /// True for the terminal's own broker, which only its user may run; false when endpoint.ini rules.
    bool isEmbedded = false;

    Transport transport = Transport::UnixSocket; ///< tells which of the next members count
    QString socketPath;                          ///< Unix socket only
    QString host;                                ///< Tcp and Tls only: a name or an IP address
    int port = 0;                                ///< Tcp and Tls only

    QByteArray prefix;   ///< empty, or the first levels of every topic path, encoded and ending in '/'
    QByteArray username; ///< empty: none is told to the broker
    QByteArray password; ///< with a username only
    QString caFile;      ///< Tls only; empty: the certificate authorities of the system
    QString certFile;    ///< Tls only; empty: this client shows no certificate
    QString keyFile;     ///< of certFile
};

} // namespace LocalCommunication
