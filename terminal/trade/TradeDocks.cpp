#include "terminal/trade/TradeDocks.h"

#include "terminal/chart/view/ChartView.h"
#include "terminal/plugin/HostRecords.h"
#include "terminal/plugin/OverlayHost.h"
#include "terminal/plugin/UserPrompts.h"
#include "terminal/trade/OrderTicket.h"
#include "terminal/trade/OrdersPanel.h"
#include "terminal/trade/OutcomeText.h"
#include "terminal/trade/TradeDock.h"

#include <QAction>
#include <QMainWindow>
#include <QPointer>
#include <QShortcut>

namespace Terminal {

namespace {

constexpr auto buyKey = Qt::Key_F1;
constexpr auto sellKey = Qt::Key_F2;
constexpr auto panelKey = Qt::Key_F3;

QString withKeys(const QString &text, const QStringList &keys)
{
    return QStringLiteral("%1 (%2)").arg(text, keys.join(QStringLiteral(", ")));
}

QString keyText(Qt::Key key)
{
    return QKeySequence(key).toString(QKeySequence::NativeText);
}

} // namespace

TradeDocks::TradeDocks(QMainWindow *window, ChartView *chart, OrderDesk *desk, UserPrompts *prompts,
                       CloseBefore closeBefore)
    : m_window(window),
      m_chart(chart),
      m_prompts(prompts),
      m_closeBefore(std::move(closeBefore)),
      m_desk(*desk),
      m_chartOrders(chart),
      m_ticket(new OrderTicket),
      m_panel(new OrdersPanel),
      m_ticketDock(new TradeDock("ticketDock", m_ticket, window, Qt::RightDockWidgetArea)),
      m_panelDock(new TradeDock("ordersDock", m_panel, window, Qt::BottomDockWidgetArea)),
      m_ticketAction(m_ticketDock->toggleViewAction()),
      m_panelAction(m_panelDock->toggleViewAction())
{
    window->setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    addShortcuts();
    wireTicket();
    wirePanel();
    wireDesk();
    connect(chart, &ChartView::dataChanged, this, &TradeDocks::showChart);
    connect(chart, &ChartView::barsAppended, this, &TradeDocks::showLastPrice);
    for (TradeDock *const dock : {m_ticketDock, m_panelDock}) {
        connect(dock, &QDockWidget::visibilityChanged, this, &TradeDocks::watchWhenShown);
    }
    showTexts();
}

TradeDocks::~TradeDocks() = default;

void TradeDocks::addShortcuts()
{
    const auto add = [this](Qt::Key key, std::function<void()> act) {
        auto *const shortcut = new QShortcut(key, m_window);
        shortcut->setAutoRepeat(false);
        connect(shortcut, &QShortcut::activated, this, std::move(act));
    };
    add(buyKey, [this] { openTicket(Direction::Buy); });
    add(sellKey, [this] { openTicket(Direction::Sell); });
    add(panelKey, [this] {
        m_panelDock->show();
        m_panel->focusOrders();
    });
}

void TradeDocks::wireTicket()
{
    connect(m_ticket, &OrderTicket::sendAsked, this, &TradeDocks::sendOrder);
    connect(m_ticket, &OrderTicket::left, this, [this] { m_chart->setFocus(); });
    connect(&m_chartOrders, &ChartOrders::priceClicked, this, [this](double price) {
        if (m_ticketDock->isVisible()) {
            m_ticket->setPrice(price);
        }
    });
}

void TradeDocks::wirePanel()
{
    connect(m_panel, &OrdersPanel::cancelAsked, this, &TradeDocks::askToCancel);
    connect(m_panel, &OrdersPanel::selectionChanged, this,
            [this] { m_chartOrders.setSpotlight(m_panel->selected()); });
    connect(&m_chartOrders, &ChartOrders::pointedAt, m_panel, &OrdersPanel::select);
}

void TradeDocks::wireDesk()
{
    connect(&m_desk, &OrderDesk::ordersChanged, this, &TradeDocks::showOrders);
    connect(&m_desk, &OrderDesk::accountChanged, this, &TradeDocks::showFacts);
    connect(&m_desk, &OrderDesk::answeringChanged, this, &TradeDocks::showFacts);
    connect(&m_desk, &OrderDesk::placed, this, &TradeDocks::tellPlaced);
    connect(&m_desk, &OrderDesk::cancelAnswered, this, &TradeDocks::tellCancelled);
}

/// Nothing is asked for those who only look at charts.
void TradeDocks::watchWhenShown()
{
    if (!m_ticketDock->isHidden() || !m_panelDock->isHidden()) {
        m_desk.watch();
    }
}

void TradeDocks::setShown(bool shown)
{
    m_ticketDock->setVisible(shown);
    m_panelDock->setVisible(shown);
    watchWhenShown();
}

void TradeDocks::openTicket(Direction side)
{
    m_ticketDock->show();
    m_ticket->setSide(side);
    m_ticket->focusPrice();
}

void TradeDocks::setTheme(const ChartTheme &theme)
{
    m_panel->setTheme(theme);
    m_ticketDock->setTheme(theme);
    m_panelDock->setTheme(theme);
}

void TradeDocks::setAmountsHidden(bool hidden)
{
    m_hidesAmounts = hidden;
    m_ticket->setAmountsHidden(hidden);
    m_panel->setAmountsHidden(hidden);
}

void TradeDocks::showTexts()
{
    m_ticketDock->setWindowTitle(tr("Order ticket"));
    m_panelDock->setWindowTitle(tr("Orders and positions"));
    m_ticketAction->setText(withKeys(tr("Order ticket: buy, sell"), {keyText(buyKey), keyText(sellKey)}));
    m_panelAction->setText(withKeys(tr("Orders and positions"), {keyText(panelKey)}));
}

std::optional<Trading::TradingDate> TradeDocks::shownDay() const
{
    const ChartData &data = m_chart->data();
    const bool isPastDay = data.period == ChartPeriod::Minute && !data.bars.empty() && !isTodaysChart(data);
    return isPastDay ? std::optional(dayOf(data.bars.back())) : std::nullopt;
}

void TradeDocks::showChart()
{
    const ChartData &data = m_chart->data();
    const auto last = data.bars.empty() ? std::nullopt : std::optional<double>(data.bars.back().close);
    m_facts.closeBefore = m_closeBefore(data);
    m_desk.show(data.security, shownDay());
    m_ticket->setSecurity(data.security, last.value_or(0));
    m_panel->setLastPrice(data.security, last);
    showOrders();
    showFacts();
}

void TradeDocks::showLastPrice()
{
    const ChartData &data = m_chart->data();
    m_ticket->setLastPrice(data.bars.back().close);
    m_panel->setLastPrice(data.security, data.bars.back().close);
}

void TradeDocks::showOrders()
{
    m_chartOrders.setOrders(m_desk.orders());
    m_panel->setOrders(m_desk.orders(), shownDay());
}

void TradeDocks::showFacts()
{
    const auto &account = m_desk.account();
    m_facts.moduleAnswers = m_desk.isAnswering();
    if (account) {
        const Position *const found = account->find(m_chart->data().security);
        const Position held = found == nullptr ? Position() : *found;
        m_facts.available = account->available;
        m_facts.held = held.quantity;
        m_facts.sellable = held.sellable;
    }
    m_ticket->setFacts(m_facts);
    m_panel->setAccount(account);
    m_panel->setAnswering(m_desk.isAnswering());
}

void TradeDocks::sendOrder(const OrderRequest &order)
{
    m_ticket->showResult(OutcomeText::sent(order, m_hidesAmounts), OrderTicket::Tone::Plain);
    m_desk.place(order);
}

/// A plan's orders are told by who has made the plan.
void TradeDocks::tellPlaced(const OrderRequest &order, const DeskOutcome &outcome)
{
    if (order.origin != OrderOrigin::Hand) {
        return;
    }
    if (!outcome.isLate) {
        m_ticket->endSending();
    }
    const bool isPlaced = outcome.kind == DeskOutcome::Kind::Accepted;
    const QString text = OutcomeText::placed(order, outcome, m_hidesAmounts);
    m_ticket->showResult(text, isPlaced ? OrderTicket::Tone::Good : OrderTicket::Tone::Bad);
    m_prompts->show(text);
}

void TradeDocks::askToCancel(const OrderRecord &order)
{
    const QPointer<TradeDocks> self(this); // the window may be closed while the user is asked
    if (m_prompts->confirm(OutcomeText::cancelQuestion(order)) && self) {
        m_desk.cancel(order);
    }
}

void TradeDocks::tellCancelled(const OrderRecord &order, const DeskOutcome &outcome)
{
    m_prompts->show(OutcomeText::cancelled(order, outcome));
}

} // namespace Terminal
