#pragma once

#include <QObject>

#include <chrono>
#include <optional>

namespace Trading {

/// Turns SIGTERM and SIGINT into QCoreApplication::quit(), so that a program that is told to end ends
/// cleanly. One at a time per process.
class TerminationSignals : public QObject
{
public:
    /// When something that hangs keeps the program from ending for `patience`, below an hour, it ends with 1
    /// all the same; nothing: it is waited for.
    explicit TerminationSignals(std::optional<std::chrono::microseconds> patience = {});
    ~TerminationSignals() override;
};

} // namespace Trading
