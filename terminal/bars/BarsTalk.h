#pragma once

#include "terminal/bars/LedgerComparison.h"

#include <QString>

namespace Terminal {

/// Runs `tradeterminal bars import --json`: takes bars in for another program, such as a window, which
/// speaks on standard input and is answered on standard output, an object of JSON a line; docs/terminal.md
/// has the words. Nothing is written before the program says so, and the last thing that was written can be
/// taken back. Returns the exit code when standard input ends.
int talkAboutBars(const QString &dataFolder, const LedgerOfTrades &ledger);

} // namespace Terminal
