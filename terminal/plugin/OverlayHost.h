#pragma once

#include "terminal/chart/axes/PriceFit.h"
#include "terminal/chart/marks/PointerTarget.h"
#include "terminal/plugin/HostAxis.h"
#include "terminal/plugin/OverlayItem.h"
#include "terminal/plugin/OverlayKind.h"
#include "terminal/plugin/OverlayLibrary.h"

#include <QSet>
#include <QTimer>

namespace Terminal {

/// Runs `proceed` once something has come true; never after `context` is gone.
using Gate = std::function<void(QObject *context, std::function<void()> proceed)>;

/// What overlays wait for before they are calculated.
struct BusGates
{
    Gate joined;   ///< the overlays made before the call have had time to join the bus
    Gate answered; ///< a trading module answers: one that is asked now will not keep the window waiting
};

/// The overlays of one chart, through the whole of their lives: it makes and ends them, hands them the
/// loaded bars, lets them paint and brings them the mouse.
class OverlayHost : public QObject, public PointerTarget
{
    Q_OBJECT

public:
    /// `chart` and `prompts` must outlive the host. `screenId` names the window on the bus;
    /// overlays ask for their data again every `refreshSeconds`.
    OverlayHost(ChartView *chart, UserPrompts *prompts, const OverlayLibrary &library, BusGates gates,
                const QByteArray &screenId, int refreshSeconds);
    ~OverlayHost() override;

    /// Puts an overlay on the chart or takes it away; false when the library does not make this kind.
    bool setShown(const OverlayKind &kind, bool shown);
    bool isShown(const OverlayKind &kind) const;
    void setAmountsHidden(bool hidden);

    /// What the overlay of this kind has drawn last; null when it is not shown.
    const DrawnMarks *drawnMarks(const OverlayKind &kind) const;

    /// Makes the overlays that are bound to a range anew, which asks for their data again.
    void renew();

    /// Calculates the combined overlays of a security, which show what they have heard only then.
    void showHeard(const QString &code);

    /// Makes those of them anew that add up records: others were lost.
    void renewCombined(const QString &code);

    /// Recalculates and repaints what has asked for it, now instead of soon.
    void runUpdates();

    bool isHit(const QPointF &position) override;
    void press(const QPointF &position, Qt::MouseButton button) override;
    void release(const QPointF &position, Qt::MouseButton button) override;
    void move(const QPointF &position) override;
    std::vector<ClickableMark> marks() override;

Q_SIGNALS:
    /// An overlay of this kind has new data and will be repainted, or a combined one has been calculated.
    void updateAsked(const OverlayKind *kind);

private:
    struct Entry
    {
        const OverlayKind *kind;
        std::shared_ptr<OverlayHandle> overlay;
        std::unique_ptr<OverlayItem> item;
        bool joined = false;
        bool waits = false; ///< for a trading module that answers
    };

    void showLoadedBars();
    void takeAppendedBars();
    bool make(Entry *entry);
    void awaitJoining(const Entry &entry);
    void endAll();
    static void end(Entry *entry);
    void markJoined(const std::weak_ptr<OverlayHandle> &overlay);
    Entry *find(const std::weak_ptr<OverlayHandle> &overlay);
    void renewEntry(Entry *entry);
    void calc(Entry *entry);
    void calcWhenAnswered(Entry *entry);
    void calcNow(const Entry &entry);
    bool shows(const QString &code) const;
    void calcAll();
    std::vector<PriceSpan> priceWishes() const;
    QString summary();
    void queueUpdate(Korvane::IChartObject *object);
    const Entry *entryAt(const QPointF &position, QPointF *target) const;
    bool takesClicks(const Entry &entry) const;
    ClickableMark clickable(const Entry &entry, const DrawnMark &mark);
    bool isOnPricePane(const QPointF &position) const;

    ChartView *m_chart;
    OverlayLibrary m_library;
    BusGates m_gates;
    int m_refreshSeconds;
    HostAxis m_axis;
    GlyphSprites m_sprites;
    Korvane::tagCodeWithName m_security{};
    std::vector<Korvane::AnalyData> m_bars;
    std::vector<Entry> m_entries;
    QSet<Korvane::IChartObject *> m_updates;
    QTimer m_updateTimer;
    QTimer m_heartbeat;
    bool m_hidesAmounts = false;
};

} // namespace Terminal
