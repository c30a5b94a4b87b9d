#pragma once

#include <QString>

namespace Trading {

/// A text without what a terminal would obey: what files and other programs wrote may move its cursor, change
/// its title, or turn the order of what is shown. Tabs become blanks, line ends placeholders.
QString printable(QString text);

/// The same of each line of a text.
QString printableLines(const QString &text);

} // namespace Trading
