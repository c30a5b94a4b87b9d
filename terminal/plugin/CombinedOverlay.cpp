#include "terminal/plugin/CombinedOverlay.h"

#include <QObject>
#include <QVariant>

#include <algorithm>
#include <vector>

namespace Terminal {

namespace {

/// How many lines the caller shows. A library that does not tell shows one at least.
int listLength(const QObject *caller)
{
    const QVariant length =
        caller == nullptr ? QVariant() : caller->property(Korvane::CombinedOverlay::listLength);
    return std::max(1, length.toInt());
}

} // namespace

int CombinedAxis::popupMenu(const char **lines, void *reserved)
{
    if (lines == nullptr) {
        return m_chart.popupMenu(lines, reserved);
    }
    std::vector<const char *> ended(lines, lines + listLength(m_caller));
    ended.push_back(nullptr);
    return m_chart.popupMenu(ended.data(), reserved);
}

CombinedOverlay::CombinedOverlay(Korvane::CombinedOverlay::Constructor construct, Korvane::IChartAxis &chart,
                                 const char *json)
    : m_axis(chart)
{
    construct(m_memory.data(), m_axis, json);
    m_axis.setCaller(reinterpret_cast<const QObject *>(m_memory.data()));
}

CombinedOverlay::~CombinedOverlay()
{
    object()->~IChartObject(); // virtual: ends the whole overlay and leaves the memory alone
}

Korvane::IChartObject *CombinedOverlay::object()
{
    return reinterpret_cast<Korvane::IChartObject *>(m_memory.data() +
                                                     Korvane::CombinedOverlay::interfaceOffset);
}

} // namespace Terminal
