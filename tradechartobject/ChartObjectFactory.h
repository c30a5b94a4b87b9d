#pragma once

#include "tradechartobject/ChartInterface.h"
#include "tradechartobject/TradeChartExport.h"

/// Creates the overlay that `json` describes and hands it to the host; null when it describes none.
///
/// `axis` is the chart that shows the overlay and must outlive it. `json` is a NUL-terminated UTF-8
/// object: "type" 0 is the position cost line, 1 the buy/sell points, 2 the order points;
/// "auto_refresh_time" is the refresh interval in seconds, default 10. A text that is no JSON object counts
/// as an empty one. An unknown "type" is told in one critical line of Qt's log.
extern "C" TRADECHARTOBJECT_EXPORT Korvane::IChartObject *CreateChartObject(Korvane::IChartAxis &axis,
                                                                            const char *json);
