#pragma once

#include "terminal/chart/axes/PriceFit.h"
#include "terminal/plugin/HostAxis.h"
#include "terminal/plugin/OverlayPointer.h"
#include "terminal/plugin/OverlaySet.h"
#include "terminal/plugin/OverlayUpdates.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>

#include <chrono>
#include <cstdint>
#include <vector>

namespace Terminal {

class UserPrompts;

/// The overlays of one chart, wired to it: which of them there are, when they are calculated, what the mouse
/// does with them, their wishes for the price scale and their words for a screen reader.
class OverlayHost : public QObject
{
    Q_OBJECT

public:
    /// `chart` and `prompts` must outlive the host. `screenId` names the window on the bus;
    /// overlays ask for their data again every `refresh`.
    OverlayHost(ChartView *chart, UserPrompts *prompts, const OverlayLibrary &library, const BusGates &gates,
                const QByteArray &screenId, std::chrono::seconds refresh);
    ~OverlayHost() override;

    /// Puts an overlay on the chart or takes it away; false when the library does not make this kind.
    bool setShown(const OverlayKind &kind, bool shown);
    bool isShown(const OverlayKind &kind) const { return m_overlays.find(kind) != nullptr; }
    void setAmountsHidden(bool hidden);

    /// What the overlay of this kind has drawn last; null when it is not shown.
    const DrawnMarks *drawnMarks(const OverlayKind &kind) const;

    /// The texts of the labels that it has drawn last.
    QStringList drawnLabels(const OverlayKind &kind) const;

    /// What of them answers to mouse and keys.
    PointerTarget *pointer() { return &m_pointer; }
    bool isHit(const QPointF &position) { return m_pointer.isHit(position); }

    /// Makes the overlays that are bound to a range anew, which asks for their data again, and calculates
    /// all.
    void renew();

    /// Calculates the combined overlays of a security, which show what they have heard only then.
    void showHeard(const QString &code);

    /// Makes the overlays anew that show past trades of a security: these have changed.
    void renewPastTrades(const QString &code);

    /// Makes those of them anew that add up records: others were lost.
    void renewCombined(const QString &code);

    /// Recalculates and repaints what has asked for it, now instead of soon.
    void runUpdates() { m_updates.run(); }

Q_SIGNALS:
    /// See OverlayUpdates::updateAsked().
    void updateAsked(const OverlayKind *kind);

    /// See OverlaySet::lost().
    void lost(const OverlayKind &kind);

private:
    void takeLoadedBars();
    void showLoadedBars();
    void showGrownBars(int first);
    std::int32_t lastDay() const;
    void showPrices();
    bool shows(const QString &code) const;
    std::vector<PriceSpan> priceWishes() const;
    QString summary();

    ChartView *m_chart;
    HostAxis m_axis;
    OverlaySet m_overlays;
    OverlayUpdates m_updates;
    OverlayPointer m_pointer;
    std::int32_t m_lastDay = 0; ///< of the bars that overlays were made on
};

} // namespace Terminal
