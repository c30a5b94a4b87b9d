#pragma once

#include "terminal/data/Loaded.h"
#include "terminal/plugin/OverlayHandle.h"

#include <QJsonObject>
#include <QLibrary>

namespace Terminal {

/// The overlay library, known by its file and its factory alone. Once loaded it stays so.
class OverlayLibrary
{
public:
    /// Loads `file`; a failure says what is wrong with it.
    static Loaded<OverlayLibrary> open(const QString &file);

    /// Makes an overlay for the chart of `axis`, which must outlive it. Null when the library does not
    /// know the configuration.
    std::shared_ptr<OverlayHandle> create(Korvane::IChartAxis &axis, const QJsonObject &configuration) const;

private:
    using Factory = Korvane::IChartObject *(*)(Korvane::IChartAxis &, const char *);

    Factory m_factory = nullptr;
};

} // namespace Terminal
