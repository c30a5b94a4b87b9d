#pragma once

#include <QString>

namespace Trading {

/// The English word for a status of an order, a source text of the translations' context "OrderStatus"; null
/// for a code that the vocabulary does not have. Letter case does not matter.
const char *orderStatusName(const QString &code);

} // namespace Trading
