#pragma once

#include "terminal/chart/marks/glyphs/GlyphSprites.h"
#include "terminal/plugin/CostAxis.h"
#include "terminal/plugin/OverlayItem.h"
#include "terminal/plugin/OverlayKind.h"
#include "terminal/plugin/OverlayLibrary.h"

#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace Terminal {

/// An overlay that is on a chart.
struct ShownOverlay
{
    const OverlayKind *kind = nullptr;
    std::shared_ptr<OverlayHandle> handle; ///< who calls into the overlay holds on to this meanwhile
    std::unique_ptr<OverlayItem> item;     ///< what it draws
};

/// The overlays on one chart, at most one of each kind: makes them, ends them, and makes them anew.
///
/// An overlay is painted with the chart from when it is made; who has it calculated is told by made().
class OverlaySet : public QObject
{
    Q_OBJECT

public:
    /// `chart` and `axis`, the chart as overlays see it, must outlive the set. Overlays ask for their data
    /// again every `refresh`.
    OverlaySet(ChartView *chart, Korvane::IChartAxis *axis, const OverlayLibrary &library,
               std::chrono::seconds refresh);
    ~OverlaySet() override;

    /// Puts an overlay on the chart, unless it is there already; false when the library does not make this
    /// kind.
    bool show(const OverlayKind &kind);

    /// Takes it away. One whose call is still on the stack, below a list or a question that it has opened, is
    /// stopped now and destroyed when the call returns.
    void hide(const OverlayKind &kind);

    /// Makes those of the shown kinds anew that `isMeant` names. One that the library does not make again is
    /// gone: see lost().
    void renew(const std::function<bool(const OverlayKind &kind)> &isMeant);

    /// Of overlays on the chart now and later.
    void setAmountsHidden(bool hidden);

    /// In the order in which they were shown, which is the order of painting.
    const std::vector<ShownOverlay> &all() const { return m_overlays; }

    /// Null when no overlay of the kind is shown.
    const ShownOverlay *find(const OverlayKind &kind) const;
    /// Null when this one is not on the chart any more.
    const ShownOverlay *find(const std::weak_ptr<OverlayHandle> &handle) const;

Q_SIGNALS:
    /// An overlay is on the chart that was not, and has seen no bars yet.
    void made(const ShownOverlay &overlay);

    /// The library did not make this kind again: it is no longer on the chart.
    void lost(const OverlayKind &kind);

private:
    ShownOverlay make(const OverlayKind &kind);
    std::shared_ptr<OverlayHandle> makeHandle(const OverlayKind &kind);
    void renewOne(const OverlayKind &kind);
    static void end(ShownOverlay *overlay);

    ChartView *m_chart;
    Korvane::IChartAxis *m_axis;
    CostAxis m_costAxis;
    OverlayLibrary m_library;
    std::chrono::seconds m_refresh;
    GlyphSprites m_sprites;
    std::vector<ShownOverlay> m_overlays;
    bool m_hidesAmounts = false;
};

} // namespace Terminal
