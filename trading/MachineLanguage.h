#pragma once

#include <QString>

namespace Trading {

/// The word of the language that the user's machine speaks: "zh" when the first of LC_ALL, LC_MESSAGES and
/// LANG that says something starts with it, else "en"; where none says anything, what the system's settings
/// say.
QString machineLanguage();

} // namespace Trading
