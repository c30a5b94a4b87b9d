#pragma once

#include "terminal/plugin/OverlayKind.h"
#include "terminal/ui/BusState.h"
#include "terminal/ui/MarketState.h"
#include "terminal/ui/ModuleState.h"

#include <QStatusBar>

#include <vector>

class QLabel;

namespace Terminal {

/// The line below the window that says how things stand: with each overlay on the chart, where the
/// exchange's day is, with the market, with the bus and with the trading module. Always of one height, so
/// that nothing moves when something is told.
class StateStrip : public QStatusBar
{
    Q_OBJECT

public:
    explicit StateStrip(QWidget *parent = nullptr);

    /// Of an overlay that is on the chart; `details` are for who points at it.
    void showOverlay(const OverlayKind &kind, const QString &state, const QStringList &details,
                     bool isTrouble);
    /// It is not on the chart.
    void hideOverlay(const OverlayKind &kind);

    void showHours(const QString &state, const QString &hours);
    void showMarket(const MarketWatch &market);
    void showBus(const BusState &bus);
    void showModule(const ModuleState &module);

    /// What it says of overlays, market, bus and module, from left to right.
    QStringList texts() const;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void makeRoom();

    std::vector<QLabel *> m_overlays; ///< in the order of overlayKinds()
    QLabel *m_hours;
    QLabel *m_market;
    QLabel *m_bus;
    QLabel *m_module;
};

} // namespace Terminal
