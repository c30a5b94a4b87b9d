#pragma once

#include "terminal/data/Loaded.h"
#include "terminal/plugin/OverlayHandle.h"
#include "tradechartobject/CombinedOverlay.h"

#include <QJsonObject>

#include <memory>

namespace Terminal {

/// The overlay library, known by its file and by the names of its factory and of the constructor of its
/// combined overlay. Once loaded it stays so.
class OverlayLibrary
{
public:
    /// Loads `file`; a failure says what is wrong with it.
    static Loaded<OverlayLibrary> open(const QString &file);

    /// Makes an overlay for the chart of `axis`, which must outlive it. Null when the library does not
    /// know the configuration.
    std::shared_ptr<OverlayHandle> create(Korvane::IChartAxis &axis, const QJsonObject &configuration) const;

    /// Makes a combined overlay, which the factory does not make. Null when the library has none.
    std::shared_ptr<OverlayHandle> createCombined(Korvane::IChartAxis &axis,
                                                  const QJsonObject &configuration) const;

private:
    using Factory = Korvane::IChartObject *(*)(Korvane::IChartAxis &, const char *);

    Factory m_factory = nullptr;
    Korvane::CombinedOverlay::Constructor m_constructCombined = nullptr;
};

} // namespace Terminal
