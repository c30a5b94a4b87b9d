// How an import of bars is asked for and described, to a user or to a program.
#pragma once

#include "terminal/bars/BarImport.h"

#include <QByteArrayList>
#include <QString>

namespace Terminal {

/// Sets the option of this name, "name", "code", "volume" or "day", by the text of its value. Returns what
/// the value must be; empty when it is taken.
QString takeImportOption(const QString &name, const QString &value, BarImportOptions *options);

/// "60 bars of days, 2024-01-02 to 2024-03-25"
QString rangeText(const BarSheet &sheet);

/// In which unit the volume is, and what tells it.
QString unitText(const BarSheet &sheet);

/// The names of the columns, the first bars and the last one, as the folder will have them: cells with commas
/// between them.
QByteArrayList previewRows(const BarSheet &sheet);

} // namespace Terminal
