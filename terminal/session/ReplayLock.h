#pragma once

#include <QString>

#include <memory>

class QLockFile;

namespace Terminal {

/// Has one program at a time replay a day on an account: two markets that play at once on one ledger would
/// deal each other's orders. It goes with its process, however that ends.
class ReplayLock
{
public:
    /// `account` names the account on the bus, see BusInstance.h; one without a name is locked by nobody.
    explicit ReplayLock(const QString &account);
    ~ReplayLock();

    /// False when another program holds it, or when it cannot be had; then problem() says why.
    bool acquire();
    void release();

    QString problem() const { return m_problem; }

private:
    const QString m_path;
    std::unique_ptr<QLockFile> m_file; ///< none without a name
    QString m_problem;
};

} // namespace Terminal
