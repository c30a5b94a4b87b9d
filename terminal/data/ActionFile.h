#pragma once

#include "terminal/data/CorporateAction.h"
#include "terminal/data/Loaded.h"
#include "terminal/data/SecurityCode.h"

#include <QByteArray>
#include <QString>

namespace Terminal {

/// Reads a text of corporate actions: a line of names, see ActionColumns, and a line for each ex-date, in any
/// order. Cells that are empty or "-" are nothing. A failure names `path`, the line and, where it is one
/// cell's, the column; and the whole text is refused: one wrong action makes all prices before it wrong.
Loaded<CorporateActions> readActions(const QByteArray &bytes, const QString &path,
                                     const std::optional<SecurityCode> &security);

/// The same of a file. One that is not there has none.
Loaded<CorporateActions> readActionFile(const QString &path, const std::optional<SecurityCode> &security);

} // namespace Terminal
