#pragma once

#include "terminal/TerminalOptions.h"
#include "terminal/data/DataFolder.h"
#include "terminal/plugin/OverlayHost.h"
#include "terminal/replay/ChartSource.h"
#include "terminal/replay/Replay.h"
#include "terminal/ui/ProgramLanguage.h"
#include "terminal/ui/WindowPrompts.h"

#include <QMainWindow>

#include <memory>

class QActionGroup;
class QComboBox;
class QMenu;

namespace Terminal {

class ChartInput;
class ChartView;
class ReadoutBar;
class ReplayedChart;
class TradeDocks;

/// The window of the terminal: the tool bar, the read-out line and the chart with its overlays.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    MainWindow(const DataFolder &folder, const TerminalOptions &options, QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Shows another security, period or day (0: the last recorded). False when its bars cannot be
    /// loaded; then nothing changes and loadError() says why.
    bool load(const QString &code, ChartPeriod period, std::int32_t day);
    QString loadError() const { return m_loadError; }

    /// The options that would show what the window shows now.
    TerminalOptions shownOptions() const;

    /// Begins to replay the shown day of minutes, paused, or ends the replay; a chart of it shows the
    /// recorded day then.
    void setReplaying(bool on);

    /// Puts the overlays that the options name on the chart. To be called once.
    void startOverlays(const OverlayLibrary &library, const BusGates &gates);

    /// Names this window on the bus; no other window has it.
    const QByteArray &screenId() const { return m_screenId; }

    /// Null before startOverlays().
    OverlayHost *overlays() const { return m_overlays.get(); }
    ChartView *chart() const { return m_chart; }
    Replay *replay() { return &m_replay; }
    TradeDocks *trade() const { return m_trade.get(); }
    UserPrompts *prompts() { return &m_prompts; }

protected:
    void changeEvent(QEvent *event) override;

private:
    void setUpToolBar();
    void setUpReplay();
    void addSecurityChoice();
    void addPeriodActions();
    void addDayChoice();
    void addOverlayActions();
    void addViewMenu();
    void addTradeActions();
    void addLookActions();
    QAction *addToggle(QWidget *place, bool checked);
    void loadOrTell(const QString &code, ChartPeriod period, std::int32_t day);
    void showChoices();
    void showTexts();
    void applyTheme();
    void applyLanguage();
    void toggleOverlay(const OverlayKind &kind, bool shown);
    void tellUnknown(const OverlayKind &kind);
    void exportChart();

    Replay m_replay;
    ChartSource m_source;
    TerminalOptions m_options;
    QByteArray m_screenId;
    ProgramLanguage m_language;
    QString m_loadError;
    ChartView *m_chart;
    ReadoutBar *m_readout;
    ReplayedChart *m_replayedChart = nullptr;
    WindowPrompts m_prompts;
    QToolBar *m_toolBar;
    QComboBox *m_securities;
    QComboBox *m_days;
    QAction *m_daysAction = nullptr;
    QActionGroup *m_periods;
    std::vector<QAction *> m_overlayActions; ///< in the order of overlayKinds()
    QMenu *m_viewMenu = nullptr;
    QAction *m_darkAction = nullptr;
    QAction *m_riseAction = nullptr;
    QAction *m_amountsAction = nullptr;
    QAction *m_languageAction = nullptr;
    QAction *m_exportAction = nullptr;
    std::unique_ptr<OverlayHost> m_overlays;
    std::unique_ptr<ChartInput> m_input;
    std::unique_ptr<TradeDocks> m_trade;
};

} // namespace Terminal
