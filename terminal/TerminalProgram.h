#pragma once

#include "endpoint/LocalBroker.h"
#include "terminal/TerminalOptions.h"
#include "terminal/plugin/OverlayLibrary.h"
#include "terminal/replay/QuoteFeed.h"
#include "terminal/services/SharedChannel.h"
#include "terminal/services/TradeLink.h"

#include <QTimer>

#include <memory>

namespace Terminal {

class MainWindow;
class Snapshot;
class TradeModuleProcess;

/// One run of the terminal: its window, the services that it starts, and the order in which they come.
///
/// Overlays ask some of their questions only once. So they are started when the trading module answers
/// on the bus, or after a moment without one; they are made anew when it answers later. What a replay has
/// to play at once comes before: the overlays then ask a trading module that knows it.
class TerminalProgram : public QObject
{
    Q_OBJECT

public:
    /// `busAddress` is the directory of the program, which names the bus instance.
    TerminalProgram(const TerminalOptions &options, const QString &busAddress);
    ~TerminalProgram() override;

    /// Runs until the window is closed or the picture is written; returns the exit code.
    int run();

private:
    QString openWindow();
    bool openChart(const QString &firstCode);
    void rememberWindow();
    void openReplay();
    QString openLibrary();
    bool asksTradeModule() const;
    void startServices();
    void joinBus();
    void startSnapshot();
    void goOnWithoutModule();
    void startWhenHeard();
    void playAtOnce();
    void startOverlays();
    void handleNews(const SharedNews &news);
    void goOn();
    void tellRefusal(const QString &reason);
    void endSnapshot(const QString &error);
    void handleBrokerState(LocalCommunication::LocalBroker::State state);
    void tell(const QString &message);
    bool isReplay() const { return m_options.replaySpeed > 0; }
    bool takesPicture() const { return !m_options.snapshotFile.isEmpty(); }

    TerminalOptions m_options;
    QString m_busAddress;
    OverlayLibrary m_library;
    bool m_hasLibrary = false;
    bool m_isJoining = false;
    bool m_isHeard = false; ///< everybody listens who must not miss anything
    bool m_isGoing = false; ///< the chart and the replay are started
    LocalCommunication::LocalBroker m_broker;
    std::unique_ptr<TradeModuleProcess> m_module;
    TradeLink m_link;
    SharedChannel m_shared;
    QTimer m_patience;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<QuoteFeed> m_feed;
    std::unique_ptr<Snapshot> m_snapshot;
};

} // namespace Terminal
