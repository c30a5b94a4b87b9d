#pragma once

namespace Terminal {

/// Has Qt paint into memory where there is no display, unless the user chose a platform. To be called
/// before the application object is made.
void useScreenlessPlatformWithoutDisplay();

/// False where windows would be seen by nobody.
bool hasDisplay();

} // namespace Terminal
