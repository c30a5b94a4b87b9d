#pragma once

#include "terminal/plugin/ForwardingAxis.h"

class QObject;

namespace Terminal {

/// The chart as one combined overlay sees it: its lists, which have no end mark, are handed on with one.
class CombinedAxis : public ForwardingAxis
{
public:
    using ForwardingAxis::ForwardingAxis;

    /// Who shows its lists here; the length of a list is known from it.
    void setCaller(const QObject *caller) { m_caller = caller; }

    int popupMenu(const char **lines, void *reserved) override;

private:
    const QObject *m_caller = nullptr;
};

} // namespace Terminal
