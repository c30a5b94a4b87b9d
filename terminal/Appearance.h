#pragma once

class QApplication;

namespace Terminal {

/// Has widgets and pictures take the density of their screen, whole or not. To be called before there is an
/// application.
void useDensityOfScreen();

/// The widget style and the fonts of the terminal, ones that have Latin and Chinese characters alike; its
/// icon, and the name by which a desktop knows its windows.
void setAppearance(QApplication *application);

} // namespace Terminal
