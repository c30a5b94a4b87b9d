#pragma once

#include "terminal/plugin/OverlaySet.h"
#include "terminal/services/Gate.h"

#include <QObject>
#include <QSet>
#include <QTimer>

#include <chrono>
#include <map>
#include <memory>
#include <vector>

namespace Terminal {

/// Has the overlays of a chart calculated: with all bars that it has loaded, when bars come, when an overlay
/// asks for it, and at least every few seconds, since overlays ask again for their data only while they are
/// calculated.
///
/// An overlay is first calculated when it has had time to join the bus. A combined one, which may ask a
/// question and block until it is answered, is calculated each time only after a trading module has just
/// answered.
class OverlayUpdates : public QObject
{
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds defaultHeartbeat = std::chrono::seconds(5);

    /// `chart` and `overlays` must outlive this object. All are calculated every `heartbeat`.
    OverlayUpdates(ChartView *chart, OverlaySet *overlays, BusGates gates,
                   std::chrono::milliseconds heartbeat = defaultHeartbeat);

    /// Takes over what the chart has loaded; calculates nothing yet.
    void takeLoadedBars();
    /// What overlays see of bars that are others now, or were added.
    enum class Growth {
        None,      ///< nothing: they do not know volumes
        OtherBars, ///< as many bars as before
        MoreBars
    };

    /// Takes over the bars of the chart from number `first` on; calculates nothing yet.
    Growth takeBarsFrom(int first);
    /// Calculates what bars that grew make necessary. A combined overlay may ask a question each time that it
    /// is calculated: it waits for the next bar, or the next heartbeat.
    void calcGrown(Growth growth);

    void calcAll();
    /// The combined overlays show what they have heard only then.
    void calcCombined();

    /// Has the overlay of this object calculated soon, once however often it asks.
    void queue(Korvane::IChartObject *object);
    /// Calculates what is queued, now instead of soon.
    void run();

Q_SIGNALS:
    /// An overlay of this kind has new data and will be repainted, or a combined one has been calculated.
    void updateAsked(const OverlayKind *kind);

private:
    /// What an overlay waits for before it can be calculated.
    enum class Awaits { Joining, Nothing, Answer };

    using WeakHandle = std::weak_ptr<OverlayHandle>;

    void awaitJoining(const ShownOverlay &overlay);
    void awaitAnswer(const ShownOverlay &overlay);
    void markJoined(const WeakHandle &handle);
    void markAnswered(const WeakHandle &handle);
    void calc(const ShownOverlay &overlay);
    void calcNow(const std::shared_ptr<OverlayHandle> &handle);
    void calcEach();
    void forgetEnded();

    ChartView *m_chart;
    OverlaySet *m_overlays;
    BusGates m_gates;
    Korvane::tagCodeWithName m_security{};
    std::vector<Korvane::AnalyData> m_bars;
    std::map<WeakHandle, Awaits, std::owner_less<WeakHandle>> m_awaits;
    QSet<Korvane::IChartObject *> m_queue;
    QTimer m_soon;
    QTimer m_heartbeat;
};

} // namespace Terminal
