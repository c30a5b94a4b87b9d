#pragma once

#include <QStringList>

namespace Terminal {

/// Makes the clock of this program that of the exchange, so that "today" is the same day everywhere.
void useExchangeTime();

/// Has Qt paint into memory when a picture or help is asked for and there is no display. To be called
/// before the application object is made; a platform that the user chose stays.
void useScreenlessPlatform(const QStringList &arguments);

} // namespace Terminal
