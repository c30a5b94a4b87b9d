#pragma once

#include <QString>

namespace Terminal {

/// The overlay library beside the program, in the build tree as after installation.
QString defaultPluginFile(const QString &programFolder);

/// The market data that is installed with the program; empty when there is none.
QString sampleDataFolder(const QString &programFolder);

} // namespace Terminal
