#pragma once

#include <QString>

namespace Terminal {

// What the name of a bar file tells. It is no proof: a proposal for the user, who may know better.

/// The code that the name begins with or has inside: "600519.SH"; empty without one.
QString codeInName(const QString &path);

/// The day in the name, as 20240131 or 2024-01-31: "20240131"; empty without one, or with two.
QString dayInName(const QString &path);

} // namespace Terminal
