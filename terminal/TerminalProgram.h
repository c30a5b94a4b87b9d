#pragma once

#include "terminal/options/AccountPlaces.h"
#include "terminal/options/TerminalOptions.h"

#include <QObject>
#include <QSet>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace Terminal {

class DataFolder;
class IntakeDoor;
class MainWindow;
class PracticeDoor;
struct PracticeOffer;
class Snapshot;
class TradeServices;
class TradingSession;
struct IntakeLook;
struct IntakePlan;

/// One run of the terminal: makes its trading session, its window, the services that it starts and the
/// picture that is asked for, and wires them.
class TerminalProgram : public QObject
{
    Q_OBJECT

public:
    /// `busAddress` is the directory of the program, which names the bus instance.
    TerminalProgram(const TerminalOptions &options, const QString &busAddress);
    ~TerminalProgram() override;

    /// What the program needs to take statements and bars in.
    struct Places
    {
        QString terminalProgram;
        QString sampleFolder;                                        ///< which stays as it is
        std::function<QString(const QString &ledger)> busInstanceOf; ///< of a child on that ledger
    };

    /// Opens the way in for statements and bars; to be called before run().
    void setPlaces(const Places &places) { m_places = places; }

    /// Runs until the window is closed or the picture is written; returns the exit code.
    int run();

    /// What is to be shown after run(): another account, or, without a data folder, the start page. Nothing
    /// when the user is done.
    std::optional<TerminalOptions> next() const { return m_next; }

    /// True when the practice of the window is to begin again from nothing before it is shown again.
    bool restartsPractice() const { return m_restartsPractice; }

private:
    QString open();
    void openSession(const DataFolder &folder);
    bool openChart(const QString &firstCode);
    bool openChartInItsPrices(const QString &firstCode);
    QString openLibrary();
    void wireServices();
    void openDoor();
    void openPracticeDoor();
    PracticeOffer practiceOffer() const;
    QStringList practiceWords() const;
    void askToRestartPractice();
    bool practises() const { return !m_options.practice.isEmpty(); }
    IntakeLook intakeLook() const;
    IntakePlan intakePlan(const AccountPlaces &places) const;
    AccountPlaces shownPlaces() const { return {m_options.dataFolder, m_options.ledger}; }
    void renewFolder(const AccountPlaces &places);
    void showTaken(const AccountPlaces &places, const QStringList &codes);
    void goOnWith(const TerminalOptions &next);
    bool asksTradeModule() const;
    void showWindow();
    void tellOfCalendar();
    void startSnapshot();
    void wireSnapshot();
    void rememberWindow();
    void watchWorkingOrders();
    void tellWorkingOrders();
    void noteOrdersLeft() const;
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
    std::optional<Places> m_places;
    std::unique_ptr<IntakeDoor> m_door;
    PracticeDoor *m_practice = nullptr; ///< of the window
    std::optional<TerminalOptions> m_next;
    bool m_restartsPractice = false;
    bool m_knowsWorkingOrders = false; ///< those that a former run has left were told
    QSet<QString> m_placed;            ///< numbers of orders of this run, until then
};

} // namespace Terminal
