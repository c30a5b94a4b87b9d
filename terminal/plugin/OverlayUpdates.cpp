#include "terminal/plugin/OverlayUpdates.h"

#include "terminal/chart/view/ChartView.h"
#include "terminal/plugin/HostRecords.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Terminal {

namespace {

bool isSameForOverlays(const Korvane::AnalyData &a, const Korvane::AnalyData &b)
{
    return a.time == b.time && a.high == b.high && a.low == b.low && a.close == b.close;
}

} // namespace

OverlayUpdates::OverlayUpdates(ChartView *chart, OverlaySet *overlays, BusGates gates,
                               std::chrono::milliseconds heartbeat)
    : m_chart(chart),
      m_overlays(overlays),
      m_gates(std::move(gates))
{
    m_soon.setSingleShot(true);
    connect(&m_soon, &QTimer::timeout, this, &OverlayUpdates::run);
    connect(&m_heartbeat, &QTimer::timeout, this, &OverlayUpdates::calcAll);
    connect(overlays, &OverlaySet::made, this, &OverlayUpdates::awaitJoining);
    m_heartbeat.start(heartbeat);
}

void OverlayUpdates::takeLoadedBars()
{
    const ChartData &data = m_chart->data();
    m_bars = hostBars(data.bars);
    m_security = hostSecurity(data.security, securityIdentity(data.security));
}

OverlayUpdates::Growth OverlayUpdates::takeBarsFrom(int first)
{
    const Bars &bars = m_chart->data().bars;
    const auto start = static_cast<std::ptrdiff_t>(first);
    const std::vector<Korvane::AnalyData> before(m_bars.begin() + start, m_bars.end());
    m_bars.resize(static_cast<size_t>(first));
    std::transform(bars.begin() + start, bars.end(), std::back_inserter(m_bars), hostBar);
    if (m_bars.size() - static_cast<size_t>(first) != before.size()) {
        return Growth::MoreBars;
    }
    return std::equal(before.begin(), before.end(), m_bars.begin() + start, isSameForOverlays)
               ? Growth::None
               : Growth::OtherBars;
}

/// Records of the old bars keep their places, so the overlays stay as they are. The chart fits its scales
/// itself when it has taken the bars.
void OverlayUpdates::calcGrown(Growth growth)
{
    switch (growth) {
    case Growth::None:
        break;
    case Growth::OtherBars:
        for (const ShownOverlay &overlay : m_overlays->all()) {
            if (!overlay.kind->isCombined()) {
                calc(overlay);
            }
        }
        break;
    case Growth::MoreBars:
        calcEach();
        break;
    }
}

void OverlayUpdates::calcAll()
{
    calcEach();
    m_chart->refit();
}

void OverlayUpdates::calcEach()
{
    for (const ShownOverlay &overlay : m_overlays->all()) {
        calc(overlay);
    }
}

void OverlayUpdates::calcCombined()
{
    for (const ShownOverlay &overlay : m_overlays->all()) {
        if (overlay.kind->isCombined()) {
            calc(overlay);
        }
    }
}

void OverlayUpdates::calc(const ShownOverlay &overlay)
{
    if (m_awaits.at(overlay.handle) != Awaits::Nothing) {
        return;
    }
    if (overlay.kind->isCombined()) {
        awaitAnswer(overlay);
    } else {
        calcNow(overlay.handle);
    }
}

void OverlayUpdates::calcNow(const std::shared_ptr<OverlayHandle> &handle)
{
    if (!m_bars.empty()) {
        handle->calc(m_security, m_bars, overlayPeriod(m_chart->data().period));
    }
}

void OverlayUpdates::awaitJoining(const ShownOverlay &overlay)
{
    forgetEnded();
    m_awaits[overlay.handle] = Awaits::Joining;
    m_gates.joined(this, [this, handle = WeakHandle(overlay.handle)] { markJoined(handle); });
}

void OverlayUpdates::markJoined(const WeakHandle &handle)
{
    if (const ShownOverlay *const overlay = m_overlays->find(handle)) {
        m_awaits[handle] = Awaits::Nothing;
        calc(*overlay);
        m_chart->refit();
    }
}

void OverlayUpdates::awaitAnswer(const ShownOverlay &overlay)
{
    m_awaits[overlay.handle] = Awaits::Answer;
    m_gates.answered(this, [this, handle = WeakHandle(overlay.handle)] { markAnswered(handle); });
}

void OverlayUpdates::markAnswered(const WeakHandle &handle)
{
    const ShownOverlay *const overlay = m_overlays->find(handle);
    if (overlay == nullptr) {
        return;
    }
    m_awaits[handle] = Awaits::Nothing;
    const OverlayKind *const kind = overlay->kind; // the overlay may be taken away while it is calculated
    calcNow(handle.lock());
    m_chart->refit();
    Q_EMIT updateAsked(kind);
}

void OverlayUpdates::forgetEnded()
{
    for (auto awaits = m_awaits.begin(); awaits != m_awaits.end();) {
        awaits = awaits->first.expired() ? m_awaits.erase(awaits) : std::next(awaits);
    }
}

void OverlayUpdates::queue(Korvane::IChartObject *object)
{
    m_queue.insert(object);
    m_soon.start(0);
    for (const ShownOverlay &overlay : m_overlays->all()) {
        if (overlay.handle->object() == object) {
            Q_EMIT updateAsked(overlay.kind);
        }
    }
}

void OverlayUpdates::run()
{
    m_soon.stop();
    const QSet<Korvane::IChartObject *> asked = std::exchange(m_queue, {});
    for (const ShownOverlay &overlay : m_overlays->all()) {
        if (asked.contains(overlay.handle->object())) {
            calc(overlay);
        }
    }
    m_chart->refit();
}

} // namespace Terminal
