#pragma once

#include "terminal/session/TradingSession.h"
#include "terminal/trades/TradesDesk.h"
#include "tests/world/SimulatedChart.h"
#include "tests/world/SimulatedTime.h"

#include <QHash>
#include <QObject>

#include <memory>
#include <optional>
#include <vector>

namespace World {

/// What a user wished of an order, and what the terminal has told of it.
struct Wish
{
    enum Kind { Placing, Replacing, Cancelling };

    Kind kind;
    Process terminal;
    Terminal::Security security;
    Terminal::Direction side;
    double price = 0;
    qint64 quantity = 0;
    QString clientNumber{};   ///< of a placing or a replacement
    QString orderNumber{};    ///< of the order that is replaced or cancelled
    bool isForgotten = false; ///< its terminal ended before it was told
    int timesAsked = 1;       ///< a double click asks twice
    std::vector<Terminal::DeskOutcome> outcomes{};
    std::optional<Instant> gaveUpAt{}; ///< when it was told last that no answer came

    /// By which its outcome is known: the user's number, or the order's.
    const QString &name() const { return kind == Cancelling ? orderNumber : clientNumber; }
    bool isAnswered() const { return static_cast<int>(outcomes.size()) >= timesAsked; }
};

/// A terminal as a program of a world: the session, the desks and the overlays of a window, and its user's
/// hand.
class SimulatedTerminal : public QObject
{
    Q_OBJECT

public:
    /// The wishes stay the caller's and outlive this object.
    SimulatedTerminal(SimulatedTime *time, const Terminal::DataFolder &folder, std::vector<Wish> *wishes);
    ~SimulatedTerminal() override;

    Process process() const { return m_process; }

    void show(const Terminal::Security &security);
    void show(SimulatedChart::Kind kind);
    /// Has the chart painted anew, as a window does in other colours: nothing is calculated.
    void changeTheme();
    const Terminal::Security &shown() const { return m_security; }

    /// Twice in a row, as a hand may.
    void place(const Terminal::OrderRequest &order, int times);
    void replace(const Terminal::OrderRecord &order, double price);
    void cancel(const Terminal::OrderRecord &order);

    const Terminal::OrderDesk &desk() { return *m_session.desk(); }
    const Terminal::TradesDesk &trades() const { return m_trades; }
    /// Of the plug-in's overlays on the shown chart; empty before there are any.
    std::string drawing() const { return m_chart ? m_chart->drawing() : std::string(); }
    /// Another chart beside it, as the user would open one now.
    std::unique_ptr<SimulatedChart> openBeside();
    void repaint(SimulatedChart *chart);

private:
    void makeChart();
    std::unique_ptr<SimulatedChart> newChart(const QByteArray &screen, bool withCombined);
    void note(Wish::Kind kind, const QString &number, const Terminal::DeskOutcome &outcome);
    void listen();

    SimulatedTime *const m_time;
    const Process m_process;
    std::vector<Wish> *const m_wishes;
    Terminal::TradingSession m_session;
    Terminal::TradesDesk m_trades;
    Terminal::Security m_security;
    SimulatedChart::Kind m_kind = SimulatedChart::Kind::Intraday;
    const QByteArray m_screen;
    std::unique_ptr<SimulatedChart> m_chart;
    QTimer m_repaint;
};

} // namespace World
