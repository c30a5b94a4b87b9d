#pragma once

#include <QString>

namespace LocalCommunication {

/// An advisory lock on a file that is never removed. Child processes to which the descriptor is handed
/// down keep the lock too, until the last of them ends.
class DirectoryLock
{
public:
    enum class Result {
        Held,    ///< by this object, now or already before
        ByOther, ///< somebody else holds it
        Unusable ///< problem() tells why
    };

    DirectoryLock() = default;
    ~DirectoryLock() { release(); }
    Q_DISABLE_COPY_MOVE(DirectoryLock)

    Result tryAcquire(const QString &path);
    void release();

    /// Why the last tryAcquire() found the file unusable.
    const QString &problem() const { return m_problem; }

    /// Called in a child between fork and exec.
    void handDown() const;

private:
    Result giveUp(const QString &path, int error);

    int m_descriptor = -1;
    QString m_problem;
};

} // namespace LocalCommunication
