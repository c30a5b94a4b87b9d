#pragma once

#include "terminal/intake/FileReport.h"

#include <QJsonObject>

namespace Terminal {

/// What `tradeterminal bars import --json` says of a file that was planned.
FileReport barsReport(const QJsonObject &planned);

} // namespace Terminal
