#pragma once

#include <QString>

namespace Terminal {

/// A text that came from a file or from the bus, for a place that shows one line of plain text: what breaks a
/// line, turns the direction of writing round or is not seen at all stands there as a placeholder, so that it
/// can neither add a line nor hide one.
QString plainText(const QString &text);

/// The same for a tool tip, whose lines stay lines: one that looks like markup would be taken for markup.
QString plainTip(const QString &text);

} // namespace Terminal
