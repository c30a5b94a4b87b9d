#pragma once

#include <QByteArray>
#include <QString>

/// A PostgreSQL server's socket in a directory, for proxies that stand before one.
namespace ServerSocket {

/// Where the server of a ledger's location listens.
QString directoryOf(const QString &location);

/// The descriptors are the caller's.
int listenIn(const QString &directory);
int connectTo(const QString &directory);

/// What can be read now; empty at the end.
QByteArray readSome(int from);
/// False when nobody reads it.
bool writeAll(int to, const QByteArray &bytes);

} // namespace ServerSocket
