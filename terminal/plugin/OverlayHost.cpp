#include "terminal/plugin/OverlayHost.h"

#include "terminal/chart/view/ChartSummary.h"
#include "terminal/chart/view/ChartView.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <utility>

namespace Terminal {

OverlayHost::OverlayHost(ChartView *chart, UserPrompts *prompts, const OverlayLibrary &library,
                         const BusGates &gates, const QByteArray &screenId, std::chrono::seconds refresh)
    : m_chart(chart),
      m_axis(chart, prompts, screenId, nullptr),
      m_overlays(chart, &m_axis, library, refresh),
      m_updates(chart, &m_overlays, gates),
      m_pointer(chart, &m_overlays, &m_axis)
{
    connect(&m_axis, &HostAxis::updateRequested, &m_updates, &OverlayUpdates::queue);
    connect(&m_updates, &OverlayUpdates::updateAsked, this, &OverlayHost::updateAsked);
    connect(&m_overlays, &OverlaySet::lost, this, &OverlayHost::lost);
    connect(chart, &ChartView::dataChanged, this, &OverlayHost::showLoadedBars);
    connect(chart, &ChartView::barsGrew, this, &OverlayHost::showGrownBars);
    connect(chart, &ChartView::pricesChanged, this, &OverlayHost::showPrices);
    chart->setPriceWishes([this] { return priceWishes(); });
    chart->setOverlaySummary([this] { return summary(); });
    takeLoadedBars();
}

OverlayHost::~OverlayHost()
{
    m_chart->setPriceWishes({});
    m_chart->setOverlaySummary({});
}

bool OverlayHost::setShown(const OverlayKind &kind, bool shown)
{
    if (shown == isShown(kind)) {
        return true;
    }
    if (!shown) {
        m_overlays.hide(kind);
    } else if (!m_overlays.show(kind)) {
        return false;
    }
    m_chart->refit();
    return true;
}

void OverlayHost::setAmountsHidden(bool hidden)
{
    m_axis.setAmountsHidden(hidden);
    m_overlays.setAmountsHidden(hidden);
    m_chart->refit();
}

const DrawnMarks *OverlayHost::drawnMarks(const OverlayKind &kind) const
{
    const ShownOverlay *const overlay = m_overlays.find(kind);
    return overlay == nullptr ? nullptr : &overlay->item->marks();
}

QStringList OverlayHost::drawnLabels(const OverlayKind &kind) const
{
    const ShownOverlay *const overlay = m_overlays.find(kind);
    return overlay == nullptr ? QStringList() : overlay->item->labels();
}

void OverlayHost::showLoadedBars()
{
    takeLoadedBars();
    renew();
}

void OverlayHost::takeLoadedBars()
{
    m_updates.takeLoadedBars();
    m_lastDay = lastDay();
}

std::int32_t OverlayHost::lastDay() const
{
    const Bars &bars = m_chart->data().bars;
    return bars.empty() ? 0 : bars.back().date;
}

/// A day more is another range: who adds up records of a range begins anew.
void OverlayHost::showGrownBars(int first)
{
    const OverlayUpdates::Growth growth = m_updates.takeBarsFrom(first);
    const std::int32_t lastBefore = std::exchange(m_lastDay, lastDay());
    if (m_lastDay == lastBefore) {
        m_updates.calcGrown(growth);
    } else {
        renew();
    }
}

/// The days are the same, and so is what overlays have asked for.
void OverlayHost::showPrices()
{
    takeLoadedBars();
    m_updates.calcAll();
}

void OverlayHost::renew()
{
    m_overlays.renew([](const OverlayKind &kind) { return kind.boundToRange; });
    m_updates.calcAll();
}

void OverlayHost::renewPastTrades(const QString &code)
{
    if (shows(code)) {
        m_overlays.renew(
            [](const OverlayKind &kind) { return kind.asks(TradeChart::CmdType::HISTORYTRADE); });
    }
}

void OverlayHost::renewCombined(const QString &code)
{
    if (shows(code)) {
        m_overlays.renew(
            [](const OverlayKind &kind) { return kind.isCombined() && !kind.questions.empty(); });
    }
}

void OverlayHost::showHeard(const QString &code)
{
    if (shows(code)) {
        m_updates.calcCombined();
    }
}

bool OverlayHost::shows(const QString &code) const
{
    return m_chart->data().security.code == code;
}

std::vector<PriceSpan> OverlayHost::priceWishes() const
{
    std::vector<PriceSpan> wishes;
    for (const ShownOverlay &overlay : m_overlays.all()) {
        Korvane::IChartObject *const object = overlay.handle->object();
        int unused = 0;
        object->calcRatio(0, 0);
        wishes.push_back({object->minimizeValue(unused), object->maximizeValue(unused)});
    }
    return wishes;
}

QString OverlayHost::summary()
{
    QStringList texts;
    const QString marks = marksSummary(m_pointer.marks());
    if (!marks.isEmpty()) {
        texts.append(marks);
    }
    for (const ShownOverlay &overlay : m_overlays.all()) {
        texts.append(overlay.item->labels());
    }
    return texts.join(QStringLiteral("; "));
}

} // namespace Terminal
