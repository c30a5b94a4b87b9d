#pragma once

#include <QProcess>

namespace Terminal {

/// A child that does not outlive this program, not even when it is killed or crashes. Where the system
/// cannot promise that (macOS), it is ended by the destructor of its owner only.
class ChildProcess : public QProcess
{
    Q_OBJECT

public:
    using QProcess::QProcess;

protected:
    void setupChildProcess() override;
};

} // namespace Terminal
