// Numbers in the texts of answers: as QString reads them, sooner for the plain digits that they mostly are.
#pragma once

#include "tradechartobject/common/FieldText.h"

namespace TradeChart {

/// QString::toInt(): 0 for what is no number or does not fit.
int toInt(const FieldText &text);

/// QString::toDouble(): 0.0 for what is no number.
double toDouble(const FieldText &text);

} // namespace TradeChart
