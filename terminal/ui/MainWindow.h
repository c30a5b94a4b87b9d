#pragma once

#include "terminal/answers/OverlayStates.h"
#include "terminal/answers/ScreenAnswers.h"
#include "terminal/data/DataFolder.h"
#include "terminal/options/TerminalOptions.h"
#include "terminal/plugin/OverlayHost.h"
#include "terminal/services/Gate.h"
#include "terminal/ui/InterfaceLanguage.h"
#include "terminal/ui/MarketHours.h"
#include "terminal/ui/ServiceStates.h"
#include "terminal/ui/WindowPrompts.h"
#include "trading/TradingDate.h"

#include <QByteArray>
#include <QMainWindow>
#include <QString>
#include <QTimer>

#include <memory>
#include <optional>

class QLabel;

namespace Terminal {

class ToolBarRows;
class ChartBar;
class ChartInput;
class ChartTrades;
class ChartTrail;
class ChartView;
class FocusFrame;
class LiveChart;
class OverlayBar;
class ReadoutBar;
class ResultsDock;
struct ResultsPlace;
class StateStrip;
class TradeDocks;
class TradingSession;
struct SharedNews;
class WatchDock;

/// The window of the terminal on a trading day: the tool bars, the read-out line, the chart with its
/// overlays, and the docks for trading.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// `session` must outlive the window.
    MainWindow(TradingSession *session, const TerminalOptions &options, QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Shows another security, period or day (nothing: the last recorded). False when its bars cannot be
    /// loaded; then nothing changes and loadError() says why.
    bool load(const QString &code, ChartPeriod period, std::optional<Trading::TradingDate> day = {});
    QString loadError() const { return m_loadError; }

    /// Which prices charts that are loaded from now on have.
    void setPrices(PriceView view);

    /// The session's data folder has other files now: offers its securities.
    void renewSecurities();

    /// Asks the user whether he leaves the account while orders wait; true without any.
    bool mayLeave();

    /// Shows a menu in the bar above the chart.
    void addMenu(QMenu *menu);

    /// The options that would show what the window shows now.
    TerminalOptions shownOptions() const;

    /// Begins to replay the shown day of minutes, paused, or ends the replay; a chart of it shows the
    /// recorded day then. Returns why it cannot be replayed, for the user; then nothing changes.
    QString setReplaying(bool on);

    /// Whether a day that is to be replayed is to be practised instead, on an account of its own: then
    /// practiceAsked() says so.
    void setPractisesReplays(bool on) { m_practisesReplays = on; }

    /// The overlays that the options name come from this library, when the session says that they are due.
    void setOverlayLibrary(const OverlayLibrary &library) { m_library = library; }

    /// Puts them on the chart at once. To be called once.
    void startOverlays(const OverlayLibrary &library, const BusGates &gates);

    /// Names this window on the bus; no other window has it.
    const QByteArray &screenId() const { return m_screenId; }

    /// What the overlays of the window hear; to be started when there is a bus.
    ScreenAnswers *answers() { return &m_answers; }

    /// How things stand with bus and trading module; to be told of those that the terminal starts itself.
    ServiceStates *services() { return &m_services; }

    /// Null before overlays are started.
    OverlayHost *overlays() const { return m_overlays.get(); }
    ChartView *chart() const { return m_chart; }
    TradeDocks *trade() const { return m_trade.get(); }
    /// To be started when there is a bus.
    ChartTrades *trades() const { return m_trades.get(); }
    /// To be started when there is a bus.
    ResultsDock *results() const { return m_results.get(); }
    UserPrompts *prompts() { return &m_prompts; }
    const MarketHours &hours() const { return m_hours; }

    /// Has the overlays calculated and painted that have asked for it, and what is said of them written, now
    /// instead of soon.
    void runOverlayUpdates();

Q_SIGNALS:
    /// The shown day of minutes is to be practised.
    void practiceAsked();
    /// The practice of this window is to begin again, from nothing.
    void practiceRestartAsked();

    /// See OverlayHost::updateAsked().
    void overlayUpdateAsked(const OverlayKind *kind);

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setUpCentre();
    void restartReplay();
    void showPractisedTrades();
    QString practiceText() const;
    void setUpBars();
    void setUpView();
    void setUpWatch();
    void setUpReplay();
    void setUpPractice();
    void setUpStates();
    void wireSession();
    void jumpToChart(const QString &code);
    void loadOrTell(const QString &code, ChartPeriod period, std::optional<Trading::TradingDate> day);
    void showPlace(const ResultsPlace &place);
    void showChoices();
    void showTitle();
    void takeModule();
    QString accountText() const;
    void showPrices(PriceView view);
    bool renewPrices();
    void takeActions(const QString &code);
    void tellRemarks(const QStringList &remarks);
    void setAmountsHidden(bool hidden);
    void applyTheme();
    void applyLanguage();
    void bringOverlays();
    void takeNews(const SharedNews &news);
    void toggleOverlay(const OverlayKind &kind, bool shown);
    void takeShownChart();
    void showStates();
    void showHours();
    void showPractisedHours();
    void showState(const OverlayKind &kind, const QString &hindrance);
    void tellWrong(const QStringList &faults);
    void tellUnknown(const OverlayKind &kind);
    void exportChart();

    TradingSession *m_session;
    TerminalOptions m_options;
    QByteArray m_screenId;
    InterfaceLanguage m_language;
    ScreenAnswers m_answers;
    OverlayStates m_states;
    ServiceStates m_services;
    MarketHours m_hours;
    QTimer m_statesSoon;
    QTimer m_patience;           ///< with an overlay's question
    bool m_isAskedAgain = false; ///< since that began
    bool m_practisesReplays = false;
    QString m_loadError;
    ChartView *m_chart;
    ReadoutBar *m_readout;
    FocusFrame *m_chartFocus = nullptr;
    QLabel *m_practice; ///< says that nothing here is real; hidden in other windows
    ChartBar *m_bar;
    OverlayBar *m_overlayBar;
    std::unique_ptr<ToolBarRows> m_toolBarRows;
    StateStrip *m_strip;
    std::unique_ptr<LiveChart> m_live;
    WindowPrompts m_prompts;
    std::optional<OverlayLibrary> m_library;
    std::unique_ptr<OverlayHost> m_overlays;
    std::unique_ptr<ChartInput> m_input;
    std::unique_ptr<ChartTrail> m_trail;
    std::unique_ptr<TradeDocks> m_trade;
    std::unique_ptr<ChartTrades> m_trades;
    std::unique_ptr<ResultsDock> m_results;
    std::unique_ptr<WatchDock> m_watch;
};

} // namespace Terminal
