#pragma once

#include "terminal/options/TerminalOptions.h"

#include <QObject>
#include <QString>

#include <memory>

namespace Terminal {

class DataFolder;
class MainWindow;
class Snapshot;
class TradeServices;
class TradingSession;

/// One run of the terminal: makes its trading session, its window, the services that it starts and the
/// picture that is asked for, and wires them.
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
    QString open();
    void openSession(const DataFolder &folder);
    bool openChart(const QString &firstCode);
    bool openChartInItsPrices(const QString &firstCode);
    QString openLibrary();
    void wireServices();
    bool asksTradeModule() const;
    void showWindow();
    void startSnapshot();
    void wireSnapshot();
    void rememberWindow();
    void tellRefusal(const QString &reason);
    void endSnapshot(const QString &error);
    void tell(const QString &message);
    bool isReplay() const { return m_options.replaySpeed > 0; }
    bool takesPicture() const { return !m_options.snapshotFile.isEmpty(); }

    TerminalOptions m_options;
    QString m_busAddress;
    std::unique_ptr<TradeServices> m_services;
    std::unique_ptr<TradingSession> m_session;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<Snapshot> m_snapshot;
};

} // namespace Terminal
