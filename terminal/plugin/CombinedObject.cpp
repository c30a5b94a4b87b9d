#include "terminal/plugin/CombinedObject.h"

namespace Terminal {

CombinedObject::CombinedObject(Korvane::CombinedOverlay::Constructor construct, Korvane::IChartAxis &chart,
                               const char *json)
    : m_axis(chart)
{
    construct(m_memory.data(), m_axis, json);
    m_axis.setCaller(reinterpret_cast<const QObject *>(m_memory.data()));
}

CombinedObject::~CombinedObject()
{
    object()->~IChartObject(); // virtual: ends the whole overlay and leaves the memory alone
}

Korvane::IChartObject *CombinedObject::object()
{
    return reinterpret_cast<Korvane::IChartObject *>(m_memory.data() +
                                                     Korvane::CombinedOverlay::interfaceOffset);
}

} // namespace Terminal
