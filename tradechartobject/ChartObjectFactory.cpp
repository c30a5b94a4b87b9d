#include "tradechartobject/ChartObjectFactory.h"

#include "tradechartobject/common/OverlayConfig.h"
#include "tradechartobject/objects/BSPoint.h"
#include "tradechartobject/objects/EntrustPoint.h"
#include "tradechartobject/objects/PositionCost.h"

#include <QDebug>

#include <algorithm>
#include <iterator>

namespace {

template <class Overlay>
Korvane::IChartObject *create(Korvane::IChartAxis &axis, const QJsonObject &config)
{
    return new Overlay(axis, config, nullptr);
}

struct OverlayKind
{
    int algorithmType;
    Korvane::IChartObject *(*create)(Korvane::IChartAxis &, const QJsonObject &);
};

constexpr OverlayKind overlayKinds[] = {
    {0, &create<PositionCost>},
    {1, &create<BSPoint>},
    {2, &create<EntrustPoint>},
};

} // namespace

Korvane::IChartObject *CreateChartObject(Korvane::IChartAxis &axis, const char *json)
{
    const QJsonObject config = TradeChart::parseConfig(json);
    const int algorithmType = TradeChart::readAlgorithmType(config);
    const auto kind = std::find_if(
        std::begin(overlayKinds), std::end(overlayKinds),
        [algorithmType](const OverlayKind &candidate) { return candidate.algorithmType == algorithmType; });
    if (kind == std::end(overlayKinds)) {
        qCritical() << "Unknown algorithmType in CreateChartObject(), algorithmType is :" << algorithmType;
        return nullptr;
    }
    return kind->create(axis, config);
}
