#include "terminal/plugin/CombinedAxis.h"

#include "tradechartobject/CombinedOverlay.h"

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
        return ForwardingAxis::popupMenu(lines, reserved);
    }
    std::vector<const char *> ended(lines, lines + listLength(m_caller));
    ended.push_back(nullptr);
    return ForwardingAxis::popupMenu(ended.data(), reserved);
}

} // namespace Terminal
