// The name that programs around the plug-in have for TradeChart::toBsFlag(). Without the vocabulary's header,
// which brings that one into the global namespace: both stand beside each other here only.
#include "tradechartobject/TradeChartExport.h"

#include <QString>

#include <utility>

namespace TradeChart {
QString toBsFlag(QString bsflag2);
}

TRADECHARTOBJECT_EXPORT QString toBsFlag(QString bsflag2);

QString toBsFlag(QString bsflag2)
{
    return TradeChart::toBsFlag(std::move(bsflag2));
}
