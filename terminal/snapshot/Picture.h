#pragma once

#include <QString>

class QWidget;

namespace Terminal {

/// Writes what `window` shows into the PNG file `path`; the window need not be on a screen.
/// Returns an empty text, or why the file could not be written.
QString writePicture(QWidget *window, const QString &path);

} // namespace Terminal
