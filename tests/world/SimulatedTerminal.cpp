#include "tests/world/SimulatedTerminal.h"

#include <QUuid>

#include <algorithm>

namespace World {

using namespace std::chrono_literals;
using namespace Terminal;

namespace {

/// As often as a window looks whether its overlays have something new.
constexpr std::chrono::milliseconds betweenPaints = 1s;

const QString busAddress = QStringLiteral("/world");

} // namespace

SimulatedTerminal::SimulatedTerminal(SimulatedTime *time, const DataFolder &folder, std::vector<Wish> *wishes)
    : m_time(time),
      m_process(time->newProcess(true)),
      m_wishes(wishes),
      m_session(folder, {}, busAddress),
      m_screen("terminal-" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces))
{
    listen();
    m_time->as(m_process, [this] {
        m_session.begin();
        m_session.join();
        m_trades.start(busAddress);
        m_trades.watch(true);
        m_session.desk()->watch();
        m_repaint.start(betweenPaints);
    });
}

SimulatedTerminal::~SimulatedTerminal()
{
    for (Wish &wish : *m_wishes) {
        wish.isForgotten = wish.isForgotten || (wish.terminal == m_process && !wish.isAnswered());
    }
}

void SimulatedTerminal::listen()
{
    connect(&m_session, &TradingSession::overlaysDue, this, [this] { makeChart(); });
    connect(&m_repaint, &QTimer::timeout, this, [this] {
        if (m_chart) {
            m_chart->show(m_security, m_kind);
        }
    });
    connect(m_session.desk(), &OrderDesk::placed, this,
            [this](const OrderRequest &order, const DeskOutcome &outcome) {
                note(Wish::Placing, order.clientNumber, outcome);
            });
    connect(m_session.desk(), &OrderDesk::replaced, this,
            [this](const PriceChange &change, const DeskOutcome &outcome) {
                note(Wish::Replacing, change.clientNumber, outcome);
            });
    connect(m_session.desk(), &OrderDesk::cancelAnswered, this,
            [this](const OrderRecord &order, const DeskOutcome &outcome) {
                note(Wish::Cancelling, order.number, outcome);
            });
}

/// One order may be cancelled again and again: its outcomes come in that order.
void SimulatedTerminal::note(Wish::Kind kind, const QString &number, const DeskOutcome &outcome)
{
    Wish *meant = nullptr;
    for (Wish &wish : *m_wishes) {
        const bool fits = wish.kind == kind && wish.terminal == m_process && wish.name() == number;
        if (fits && (meant == nullptr || meant->isAnswered())) {
            meant = &wish;
        }
    }
    meant->outcomes.push_back(outcome);
    if (outcome.kind == DeskOutcome::Kind::NoAnswer) {
        meant->gaveUpAt = m_time->now();
    }
}

/// Overlays that were made before a trading module was there have asked in vain.
void SimulatedTerminal::makeChart()
{
    m_time->as(m_process, [this] {
        if (m_chart) {
            m_chart->renew();
        } else {
            m_chart = newChart(m_screen, true);
        }
    });
}

std::unique_ptr<SimulatedChart> SimulatedTerminal::newChart(const QByteArray &screen, bool withCombined)
{
    return std::make_unique<SimulatedChart>(screen, withCombined, [this](std::function<void()> then) {
        m_session.gates().joined(this, std::move(then));
    });
}

void SimulatedTerminal::show(const Security &security)
{
    m_time->as(m_process, [&] {
        m_security = security;
        m_session.desk()->show(security, {});
        m_trades.show(security);
        if (m_chart) {
            m_chart->show(m_security, m_kind);
        }
    });
}

void SimulatedTerminal::show(SimulatedChart::Kind kind)
{
    m_time->as(m_process, [&] {
        m_kind = kind;
        if (m_chart) {
            m_chart->show(m_security, m_kind);
        }
    });
}

void SimulatedTerminal::changeTheme()
{
    m_time->as(m_process, [&] {
        if (m_chart) {
            m_chart->paint();
        }
    });
}

void SimulatedTerminal::place(const OrderRequest &order, int times)
{
    m_time->as(m_process, [&] {
        OrderRequest placing = order;
        placing.clientNumber = QUuid::createUuid().toString(QUuid::WithoutBraces);
        Wish wish{Wish::Placing, m_process,      order.security,      order.side,
                  order.price,   order.quantity, placing.clientNumber};
        wish.timesAsked = times;
        m_wishes->push_back(wish);
        for (int time = 0; time < times; ++time) {
            m_session.desk()->place(placing);
        }
    });
}

void SimulatedTerminal::replace(const OrderRecord &order, double price)
{
    m_time->as(m_process, [&] {
        Wish wish{Wish::Replacing, m_process, order.security, order.side, price, order.quantity};
        wish.orderNumber = order.number;
        wish.clientNumber = m_session.desk()->replace({order, price, {}});
        m_wishes->push_back(wish);
    });
}

void SimulatedTerminal::cancel(const OrderRecord &order)
{
    m_time->as(m_process, [&] {
        m_wishes->push_back({Wish::Cancelling,
                             m_process,
                             order.security,
                             order.side,
                             order.price,
                             order.quantity,
                             {},
                             order.number});
        m_session.desk()->cancel(order);
    });
}

std::unique_ptr<SimulatedChart> SimulatedTerminal::openBeside()
{
    std::unique_ptr<SimulatedChart> chart;
    m_time->as(m_process, [&] { chart = newChart(m_screen + "-beside", false); });
    return chart;
}

void SimulatedTerminal::repaint(SimulatedChart *chart)
{
    m_time->as(m_process, [&] { chart->show(m_security, m_kind); });
}

} // namespace World
