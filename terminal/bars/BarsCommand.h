#pragma once

#include <QString>
#include <QStringList>

namespace Terminal {

/// Runs `tradeterminal bars import FILE...`: shows what the files hold and what the data folder would have of
/// them, and writes it with --yes, or when the user says so. `arguments` are those after "bars".
/// Returns the exit code: 0 when done or shown, 1 when a file is refused, 2 for a wrong command line.
int runBarsCommand(const QStringList &arguments, const QString &programFolder);

} // namespace Terminal
