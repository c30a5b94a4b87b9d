#include "terminal/plugin/OverlaySet.h"

#include "terminal/chart/view/ChartView.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <algorithm>
#include <utility>

namespace Terminal {

namespace {

QJsonObject configurationOf(const OverlayKind &kind, std::chrono::seconds refresh)
{
    return {{QLatin1String(TradeChart::TradeKeyFields::ALGORITHMTYPE), kind.type},
            {QLatin1String(TradeChart::TradeKeyFields::AUTOREFRESHTIME), static_cast<int>(refresh.count())}};
}

/// The place of a kind in a list of overlays; its end when it is not there.
template <typename Overlays>
auto placeOf(const OverlayKind &kind, Overlays &overlays)
{
    return std::find_if(overlays.begin(), overlays.end(),
                        [&kind](const ShownOverlay &overlay) { return overlay.kind == &kind; });
}

} // namespace

OverlaySet::OverlaySet(ChartView *chart, Korvane::IChartAxis *axis, const OverlayLibrary &library,
                       std::chrono::seconds refresh)
    : m_chart(chart),
      m_axis(axis),
      m_costAxis(*axis),
      m_library(library),
      m_refresh(refresh)
{
}

OverlaySet::~OverlaySet()
{
    for (ShownOverlay &overlay : m_overlays) {
        end(&overlay);
    }
}

bool OverlaySet::show(const OverlayKind &kind)
{
    if (find(kind) != nullptr) {
        return true;
    }
    ShownOverlay overlay = make(kind);
    if (!overlay.handle) {
        return false;
    }
    m_overlays.push_back(std::move(overlay));
    Q_EMIT made(m_overlays.back());
    return true;
}

void OverlaySet::hide(const OverlayKind &kind)
{
    const auto overlay = placeOf(kind, m_overlays);
    if (overlay != m_overlays.end()) {
        end(&*overlay);
        m_overlays.erase(overlay);
    }
}

void OverlaySet::renew(const std::function<bool(const OverlayKind &kind)> &isMeant)
{
    std::vector<const OverlayKind *> kinds;
    for (const ShownOverlay &overlay : m_overlays) {
        if (isMeant(*overlay.kind)) {
            kinds.push_back(overlay.kind);
        }
    }
    for (const OverlayKind *const kind : kinds) {
        renewOne(*kind);
    }
}

void OverlaySet::renewOne(const OverlayKind &kind)
{
    const auto old = placeOf(kind, m_overlays);
    const auto number = old - m_overlays.begin();
    end(&*old);
    m_overlays.erase(old); // so that nobody meets an ended one while the new one is made
    ShownOverlay anew = make(kind);
    if (anew.handle) {
        Q_EMIT made(*m_overlays.insert(m_overlays.begin() + number, std::move(anew)));
    } else {
        Q_EMIT lost(kind);
    }
}

/// None when the library does not make this kind.
std::shared_ptr<OverlayHandle> OverlaySet::makeHandle(const OverlayKind &kind)
{
    Korvane::IChartAxis &axis = kind.isHeldAtEdge ? m_costAxis : *m_axis;
    const QJsonObject configuration = configurationOf(kind, m_refresh);
    return kind.isCombined() ? m_library.createCombined(axis, configuration)
                             : m_library.create(axis, configuration);
}

/// Without a handle when the library does not make this kind.
ShownOverlay OverlaySet::make(const OverlayKind &kind)
{
    ShownOverlay overlay{&kind, makeHandle(kind), nullptr};
    if (overlay.handle) {
        overlay.item = std::make_unique<OverlayItem>(m_chart, overlay.handle, &m_sprites);
        overlay.item->setAmountsHidden(m_hidesAmounts);
        overlay.item->attach(m_chart);
    }
    return overlay;
}

void OverlaySet::end(ShownOverlay *overlay)
{
    // A call into the overlay may still be on the stack, below a menu or a dialog; it holds on to the
    // overlay and lets go of it last.
    overlay->item.reset();
    overlay->handle->retire();
    overlay->handle.reset();
}

void OverlaySet::setAmountsHidden(bool hidden)
{
    m_hidesAmounts = hidden;
    for (const ShownOverlay &overlay : m_overlays) {
        overlay.item->setAmountsHidden(hidden);
    }
}

const ShownOverlay *OverlaySet::find(const OverlayKind &kind) const
{
    const auto overlay = placeOf(kind, m_overlays);
    return overlay == m_overlays.end() ? nullptr : &*overlay;
}

const ShownOverlay *OverlaySet::find(const std::weak_ptr<OverlayHandle> &handle) const
{
    const std::shared_ptr<OverlayHandle> wanted = handle.lock();
    const auto overlay =
        std::find_if(m_overlays.begin(), m_overlays.end(), [&wanted](const ShownOverlay &candidate) {
            return wanted && candidate.handle == wanted;
        });
    return overlay == m_overlays.end() ? nullptr : &*overlay;
}

} // namespace Terminal
