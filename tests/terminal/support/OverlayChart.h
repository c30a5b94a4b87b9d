#pragma once

#include "terminal/plugin/OverlaySet.h"
#include "tests/terminal/support/HostAxisFixture.h"
#include "tests/terminal/support/OverlayLog.h"

namespace Terminal {

/// A chart of three hundred days with a set of the tests' own overlays, and nobody who calculates them.
class OverlayChart : public HostAxisOfAChart
{
protected:
    OverlayChart() { overlayLog(); }
    ~OverlayChart() override { setLibraryMakesOverlays(true); }

    static const OverlayKind &kind(const char *word) { return *findOverlayKind(QString::fromUtf8(word)); }

    OverlaySet m_overlays{&m_chart, &m_axis, OverlayLibrary::open(QStringLiteral(TEST_OVERLAYS)).value(),
                          std::chrono::seconds(3)};
};

} // namespace Terminal
