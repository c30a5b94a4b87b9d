#pragma once

#include "terminal/data/DataFolder.h"
#include "terminal/options/TerminalOptions.h"
#include "terminal/plugin/OverlayKind.h"
#include "trading/TradingDate.h"

#include <QStringList>
#include <QToolBar>

#include <optional>
#include <vector>

class QAction;
class QActionGroup;
class QComboBox;
class QMenu;

namespace Terminal {

class ViewMenu;

/// The bar above the chart: security, period and day, the overlays, whether amounts are hidden, and the menu
/// of the view. It tells what the user chooses and shows what it is told; it changes no chart.
class ChartBar : public QToolBar
{
    Q_OBJECT

public:
    /// Offers these securities; overlays cannot be chosen yet, see enableOverlays().
    ChartBar(const Securities &securities, const TerminalOptions &options, QWidget *parent = nullptr);

    /// Offers these securities instead.
    void setSecurities(const Securities &securities);

    /// Shows a menu left of that of the view; its title may change.
    void addMenu(QMenu *menu);

    /// Shows the choices that lead to this chart; `days` are the recorded ones of its security.
    void showChart(const ChartData &shown, const std::vector<Trading::TradingDate> &days);

    /// Overlays can be chosen from now on.
    void enableOverlays();
    bool isOverlayChosen(const OverlayKind &kind) const;
    void setOverlayChosen(const OverlayKind &kind, bool chosen);
    /// How things stand with an overlay, for who points at its toggle; empty: nothing to say.
    void describeOverlay(const OverlayKind &kind, const QStringList &lines);
    /// Words of overlayKinds.
    QStringList chosenOverlays() const;

    bool hidesAmounts() const;

    ViewMenu *view() const { return m_view; }

Q_SIGNALS:
    /// Another chart is wanted; `day` is nothing for the last recorded one.
    void chartAsked(const QString &code, ChartPeriod period, std::optional<Trading::TradingDate> day);
    void overlayToggled(const OverlayKind &kind, bool shown);
    void hidingToggled(bool hidesAmounts);

protected:
    void changeEvent(QEvent *event) override;

private:
    void addSecurities(const Securities &securities);
    void addPeriods();
    void addDays();
    void addOverlays(const QStringList &chosen);
    void addHiding(bool hides);
    void addView(const TerminalOptions &options);
    QAction *addMenuButton(QMenu *menu, QAction *before);
    QAction *addToggle(bool checked);
    QAction *overlayAction(const OverlayKind &kind) const;
    QString code() const;
    void showTexts();

    ChartPeriod m_period = ChartPeriod::Day;
    QComboBox *m_securities;
    QActionGroup *m_periods;
    QComboBox *m_days;
    QAction *m_daysAction = nullptr;
    std::vector<QAction *> m_overlays; ///< in the order of overlayKinds()
    QAction *m_hiding = nullptr;
    ViewMenu *m_view = nullptr;
    QAction *m_viewButton = nullptr;
};

} // namespace Terminal
