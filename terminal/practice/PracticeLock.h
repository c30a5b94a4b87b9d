#pragma once

#include "terminal/practice/PracticeSession.h"

#include <QLockFile>
#include <QString>

namespace Terminal {

/// Has one window at a time work on a practice session. It goes with its process, however that ends.
class PracticeLock
{
public:
    explicit PracticeLock(const PracticeSession &session);

    /// False when another window holds it, or when it cannot be had; then problem() says why.
    bool acquire();

    QString problem() const { return m_problem; }

private:
    const QString m_name;
    const QString m_path;
    QLockFile m_file;
    QString m_problem;
};

} // namespace Terminal
