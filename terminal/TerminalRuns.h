#pragma once

#include "terminal/options/TerminalOptions.h"
#include "terminal/ui/InterfaceLanguage.h"

#include <QString>

#include <optional>

namespace Terminal {

/// What one process shows, one after the other: the start page where nothing is known yet, and windows, each
/// on one account. Bus and services are those of the account, and end with its window.
class TerminalRuns
{
public:
    /// `programFolder` is where the program lies, and names the bus instance.
    TerminalRuns(TerminalOptions options, QString programFolder);

    /// Runs until the user has closed the last one; returns the exit code.
    int run();

private:
    void takeRememberedPlaces();
    std::optional<int> runPractice();
    std::optional<int> runPractisedLedger();
    std::optional<int> runAccount(const TerminalOptions &options);
    int refusePractice(const QString &problem);
    bool runStartPage();
    std::optional<int> runWindow();

    TerminalOptions m_options;
    const QString m_programFolder;
    const QString m_sampleFolder;
    bool m_isAtStart = false; ///< the start page comes next
    QString m_notice;         ///< for it
    bool m_restarts = false;  ///< the practice, before its window comes
    InterfaceLanguage m_language;
};

} // namespace Terminal
