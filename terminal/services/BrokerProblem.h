#pragma once

#include <QString>

namespace Terminal {

/// What LocalBroker says of a broker that does not run, in the language of the window; a text that is not
/// known is shown as it is.
QString brokerProblemText(const QString &problem);

} // namespace Terminal
