#pragma once

#include <QString>

namespace LocalCommunication {

/// An advisory lock on a file that is never removed. Child processes to which the descriptor is handed
/// down keep the lock too, until the last of them ends.
class DirectoryLock
{
public:
    DirectoryLock() = default;
    ~DirectoryLock() { release(); }
    Q_DISABLE_COPY_MOVE(DirectoryLock)

    /// False when somebody else holds it; true also when this object holds it already.
    bool tryAcquire(const QString &path);
    void release();
    bool isHeld() const { return m_descriptor >= 0; }

    /// Called in a child between fork and exec.
    void handDown() const;

private:
    int m_descriptor = -1;
};

} // namespace LocalCommunication
