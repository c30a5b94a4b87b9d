#pragma once

class QApplication;

namespace Terminal {

/// The widget style and the fonts of the terminal: ones that have Latin and Chinese characters alike.
void setAppearance(QApplication *application);

} // namespace Terminal
