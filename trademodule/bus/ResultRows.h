#pragma once

#include "trademodule/report/KeptResults.h"

#include <QByteArray>

namespace TradeModule {

/// The "data" of an answer about results as JSON text: a part of a list, from the row `first` on. `state` is
/// the number of the reckoning.
QByteArray resultData(const KeptResults::Wish &wish, qint64 first, const KeptResults::Part &part,
                      qint64 state, const QStringList &incompleteCodes);

} // namespace TradeModule
