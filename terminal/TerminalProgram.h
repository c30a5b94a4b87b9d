#pragma once

#include "endpoint/LocalBroker.h"
#include "terminal/TerminalOptions.h"
#include "terminal/plugin/OverlayLibrary.h"
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
/// on the bus, or after a moment without one; they are made anew when it answers later.
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
    QString openLibrary();
    void startServices();
    void startSnapshot();
    void startOverlays();
    void handleAnswering();
    void endSnapshot(const QString &error);
    void tellBrokerState(LocalCommunication::LocalBroker::State state);
    void tell(const QString &message);
    bool takesPicture() const { return !m_options.snapshotFile.isEmpty(); }

    TerminalOptions m_options;
    QString m_busAddress;
    OverlayLibrary m_library;
    bool m_hasLibrary = false;
    LocalCommunication::LocalBroker m_broker;
    std::unique_ptr<TradeModuleProcess> m_module;
    TradeLink m_link;
    QTimer m_patience;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<Snapshot> m_snapshot;
};

} // namespace Terminal
