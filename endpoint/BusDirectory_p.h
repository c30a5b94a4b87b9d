#pragma once

#include <QString>

namespace LocalCommunication::BusDirectory {

/// Empty when the directory belongs to this user and nobody else may enter it, else what is wrong with
/// it. The modes of the socket in it do not protect it: brokers let the owner's group in.
QString problemWith(const QString &path);

/// Makes the directory unless it is there. Empty, or as problemWith().
QString make(const QString &path);

} // namespace LocalCommunication::BusDirectory
