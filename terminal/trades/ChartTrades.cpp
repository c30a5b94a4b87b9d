#include "terminal/trades/ChartTrades.h"

#include "terminal/chart/view/ChartPlace.h"
#include "terminal/chart/view/ChartTrail.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/plugin/HostRecords.h"
#include "terminal/plugin/OverlayHost.h"
#include "terminal/plugin/UserPrompts.h"
#include "terminal/trade/OrderResults.h"
#include "terminal/trade/OrderTicket.h"
#include "terminal/trade/OrdersPanel.h"
#include "terminal/trade/OutcomeText.h"
#include "terminal/trade/PlainText.h"
#include "terminal/trade/TradeDock.h"
#include "terminal/trade/TradeDocks.h"
#include "terminal/trades/PriceDialog.h"
#include "terminal/trades/TradesPanel.h"
#include "trading/MarketRules.h"
#include "trading/TradingUnits.h"

#include <QAction>
#include <QMainWindow>
#include <QShortcut>

#include <algorithm>

namespace Terminal {

namespace {

constexpr auto listKey = Qt::Key_F5;
constexpr int layerKey = Qt::CTRL + Qt::Key_T;

} // namespace

ChartTrades::ChartTrades(QMainWindow *window, ChartView *chart, TradeDocks *docks, ChartTrail *trail,
                         UserPrompts *prompts, Facts facts)
    : m_window(window),
      m_chart(chart),
      m_docks(docks),
      m_trail(trail),
      m_prompts(prompts),
      m_facts(std::move(facts)),
      m_layer(std::make_unique<TradesLayer>(chart, [this] { return showsTrades(); })),
      m_pointer(m_layer.get(), {[this] { return m_overlays ? m_overlays->pointer() : nullptr; },
                                [this] { return showsTrades(); },
                                [this](const std::vector<size_t> &trades) { chooseTrades(trades); }}),
      m_lines(std::make_unique<OrderLines>(
          chart, OrderLines::Place{[this] { return showsOrders(); }, [this] { return roomOfLabels(); }})),
      m_panel(new TradesPanel),
      m_dock(new TradeDock("tradesDock", m_panel, window, Qt::BottomDockWidgetArea)),
      m_layerAction(new QAction(this))
{
    addActions(window);
    m_layer->attach(chart);
    m_lines->attach(chart);
    m_input = std::make_unique<TradesInput>(
        chart, m_layer.get(), m_lines.get(),
        TradesInput::Rules{[this](const QPointF &position) { return isOverlayAt(position); },
                           [this] { return m_docks->desk()->canReplace(); },
                           [this](double wished) { return allowedPrice(wished); }});
    wireChart();
    wireLists();
    wireDesks();
    showTexts();
}

ChartTrades::~ChartTrades()
{
    m_dock->disconnect(this); // it outlives this object, and hides while the window goes
}

void ChartTrades::addActions(QMainWindow *window)
{
    if (auto *const orders = window->findChild<QDockWidget *>(QStringLiteral("ordersDock"))) {
        window->tabifyDockWidget(orders, m_dock);
    }
    m_layerAction->setCheckable(true);
    m_layerAction->setChecked(true);
    m_layerAction->setShortcut(layerKey);
    connect(m_layerAction, &QAction::toggled, this, [this] {
        watchWhenNeeded();
        m_chart->replot();
    });
    auto *const shortcut = new QShortcut(listKey, window);
    shortcut->setAutoRepeat(false);
    connect(shortcut, &QShortcut::activated, this, &ChartTrades::openList);
    connect(m_dock, &QDockWidget::visibilityChanged, this, &ChartTrades::watchWhenNeeded);
}

void ChartTrades::wireChart()
{
    connect(m_chart, &ChartView::dataChanged, this, &ChartTrades::takeChart);
    connect(m_chart, &ChartView::pricesChanged, this, [this] { m_layer->takeChart(); });
    connect(m_chart, &ChartView::barsGrew, this, [this](int first) { m_layer->takeGrown(first); });
    connect(m_input.get(), &TradesInput::tradesClicked, this, &ChartTrades::chooseTrades);
    connect(m_input.get(), &TradesInput::orderMoved, this, &ChartTrades::askToReplace);
    connect(m_input.get(), &TradesInput::orderClicked, this,
            [this](const OrderRecord &order) { m_docks->panel()->select({order}); });
}

void ChartTrades::wireLists()
{
    connect(m_panel, &TradesPanel::placeAsked, this,
            [this](size_t trade) { m_trail->jump([this, trade] { showTrade(trade); }); });
    connect(m_panel, &TradesPanel::selectionChanged, this,
            [this] { m_layer->setSelected(m_panel->selected()); });
    OrdersPanel *const orders = m_docks->panel();
    connect(orders, &OrdersPanel::placeAsked, this,
            [this](const OrderRecord &order) { m_trail->jump([this, order] { showOrder(order); }); });
    connect(orders, &OrdersPanel::tradesAsked, this, [this](const Security &security) {
        m_trail->jump([this, security] { showTradesOf(security); });
    });
    connect(orders, &OrdersPanel::priceAsked, this, &ChartTrades::askForPrice);
    connect(orders, &OrdersPanel::selectionChanged, this,
            [this, orders] { m_layer->setSelectedOrders(orders->selected()); });
}

void ChartTrades::wireDesks()
{
    connect(&m_desk, &TradesDesk::changed, this, [this] {
        m_layer->setTrades(m_desk.trades());
        m_panel->setTrades(m_chart->data().security, toldTrades());
        m_panel->setRefusal(m_desk.refusal());
        m_panel->setTold(m_desk.isUpToDate());
    });
    connect(&m_desk, &TradesDesk::answered, this, [this] {
        m_panel->setTold(m_desk.isUpToDate());
        showNewestWhenKnown();
    });
    OrderDesk *const orders = m_docks->desk();
    connect(orders, &OrderDesk::ordersChanged, this, &ChartTrades::takeOrders);
    connect(orders, &OrderDesk::replaced, this, &ChartTrades::tellReplaced);
    connect(orders, &OrderDesk::replaceAskedAgain, this, [this](const PriceChange &change) {
        tell(change, OutcomeText::replaceAskedAgain(change), true);
    });
}

void ChartTrades::start(const QString &address)
{
    m_isStarted = true;
    m_desk.start(address);
    watchWhenNeeded();
}

void ChartTrades::setOverlays(OverlayHost *overlays)
{
    m_overlays = overlays;
    m_input->comeFirst();
}

QAction *ChartTrades::listAction() const
{
    return m_dock->toggleViewAction();
}

void ChartTrades::openList()
{
    m_dock->show();
    m_dock->raise();
    m_panel->focusRows();
}

void ChartTrades::watchWhenNeeded()
{
    m_desk.watch(m_layerAction->isChecked() || !m_dock->isHidden());
    m_panel->setTold(m_desk.isUpToDate());
    if (m_isStarted && m_layerAction->isChecked()) {
        m_docks->desk()->watch();
    }
}

void ChartTrades::setTheme(const ChartTheme &theme)
{
    m_panel->setTheme(theme);
    m_dock->setTheme(theme);
}

void ChartTrades::setAmountsHidden(bool hidden)
{
    m_hidesAmounts = hidden;
    m_panel->setAmountsHidden(hidden);
    m_lines->setAmountsHidden(hidden);
}

void ChartTrades::showTexts()
{
    m_dock->setWindowTitle(tr("Trades"));
    listAction()->setText(QStringLiteral("%1 (%2)").arg(
        tr("List of trades"), QKeySequence(listKey).toString(QKeySequence::NativeText)));
    m_layerAction->setText(tr("Trades and open orders on the chart"));
}

void ChartTrades::takeChart()
{
    m_wishesNewest = false; // the user has gone on meanwhile
    m_desk.show(m_chart->data().security);
    m_layer->takeChart();
    m_panel->setTrades(m_chart->data().security, toldTrades());
    takeOrders();
}

/// As the list names them: what is replayed counts as today's on the chart alone.
Trades ChartTrades::toldTrades() const
{
    Trades trades = m_desk.trades();
    if (const auto recorded = m_chart->data().recorded) {
        for (AccountTrade &trade : trades) {
            trade.day = trade.day == Trading::TradingDate::today() ? *recorded : trade.day;
        }
    }
    return trades;
}

/// Those of the shown day have a place; those of today work.
void ChartTrades::takeOrders()
{
    const OrderRecords &orders = m_docks->desk()->orders();
    m_layer->setOrders(orders);
    m_lines->setOrders(orders);
}

/// On the days of a chart the overlays mark each day that has trades.
bool ChartTrades::showsTrades() const
{
    const auto marks = [this](const char *word) {
        return m_overlays && m_overlays->isShown(*findOverlayKind(QLatin1String(word)));
    };
    const bool isMarked =
        m_chart->data().period == ChartPeriod::Day && (marks("trades") || marks("combined-trades"));
    return m_layerAction->isChecked() && !isMarked;
}

/// On the minutes of a past day the orders are those of that day.
bool ChartTrades::showsOrders() const
{
    const ChartData &data = m_chart->data();
    const bool isPastDay = data.period == ChartPeriod::Minute && !data.bars.empty() && !isTodaysChart(data);
    return m_layerAction->isChecked() && !isPastDay;
}

/// The labels of overlays' lines are held at the right edge; tags stand beside them.
double ChartTrades::roomOfLabels() const
{
    constexpr double widestLabel = 130;
    const auto isLabelled = [this](const OverlayKind &kind) {
        return kind.isHeldAtEdge && m_overlays && m_overlays->isShown(kind);
    };
    return std::any_of(overlayKinds().begin(), overlayKinds().end(), isLabelled) ? widestLabel : 0;
}

bool ChartTrades::isOverlayAt(const QPointF &position) const
{
    return m_overlays && m_overlays->isHit(position);
}

void ChartTrades::chooseTrades(const std::vector<size_t> &trades)
{
    m_dock->show();
    m_dock->raise();
    m_panel->select(trades);
}

bool ChartTrades::showPlace(Trading::TradingDate day, Trading::ClockTime time, double price)
{
    const auto bar = barOf(m_chart->data(), day, time);
    if (bar) {
        showBar(m_chart, *bar, m_chart->data().shownPrice(price, day));
    }
    return bar.has_value();
}

/// From the minutes of another day to those of the trade's, where they are recorded, else to its day.
void ChartTrades::showTrade(size_t number)
{
    const AccountTrade trade = m_desk.trades()[number];
    if (showPlace(trade.day, trade.time, trade.price)) {
        return;
    }
    const QString code = m_chart->data().security.code;
    if (m_chart->data().period == ChartPeriod::Minute && m_facts.hasMinutes(code, trade.day)) {
        Q_EMIT chartAsked(code, ChartPeriod::Minute, trade.day);
    } else {
        Q_EMIT chartAsked(code, ChartPeriod::Day, {});
    }
    showPlace(trade.day, trade.time, trade.price);
}

void ChartTrades::showTradesOf(const Security &security)
{
    if (m_chart->data().security.id() != security.id()) {
        Q_EMIT chartAsked(security.code, m_chart->data().period, {});
    }
    if (m_chart->data().security.id() == security.id()) {
        openList();
        m_wishesNewest = true;
        showNewestWhenKnown();
    }
}

void ChartTrades::showNewestWhenKnown()
{
    if (m_wishesNewest && m_desk.isUpToDate()) {
        m_wishesNewest = false;
        if (!m_desk.trades().empty()) {
            const size_t newest = m_desk.trades().size() - 1;
            m_panel->select({newest});
            showTrade(newest);
        }
    }
}

/// One of another security is on that one's chart.
void ChartTrades::showOrder(const OrderRecord &order)
{
    if (order.security.id() != m_chart->data().security.id()) {
        Q_EMIT chartAsked(order.security.code, m_chart->data().period, {});
    }
    if (order.day && order.time && order.security.id() == m_chart->data().security.id()) {
        showPlace(*order.day, *order.time, order.price);
    }
}

Trading::SecurityRules ChartTrades::rulesOf(const Security &security) const
{
    return Trading::MarketRules::of(security.id(), m_facts.dayOfRules(), security.name);
}

double ChartTrades::allowedPrice(double wished) const
{
    using Trading::Money;
    const Security &security = m_chart->data().security; // the module need not know its name
    const Trading::SecurityRules rules = rulesOf(security);
    const double held = std::clamp(wished, 0.0, Trading::highestPrice.yuan());
    Money price = std::max(rules.tick, rules.nearestTick(Money::ofYuan(held).value_or(rules.tick)));
    const auto close = m_facts.closeBefore(m_chart->data());
    const auto reference = close ? Money::ofYuan(*close) : std::nullopt;
    if (const auto limits = reference ? rules.limits(*reference) : std::nullopt) {
        price = std::clamp(price, limits->lowest, limits->highest);
    }
    return price.yuan();
}

void ChartTrades::askForPrice(const OrderRecord &order)
{
    if (!m_docks->desk()->canReplace()) {
        m_prompts->show(
            tr("This trading module cannot change the price of an order: cancel it and place another."));
        return;
    }
    const QPointer<ChartTrades> self(this); // the window may be closed while the user is asked
    const auto price =
        PriceDialog(
            order, rulesOf(order.security), [this](double wished) { return allowedPrice(wished); }, m_window)
            .ask();
    if (self && price) {
        askToReplace({order, *price});
    }
}

/// The order may be dealt while the user thinks, too: then the module says so.
void ChartTrades::askToReplace(const PriceChange &change)
{
    if (m_lines->find(change.order.number) == nullptr) {
        m_prompts->show(tr("Order %1 is not open any more.").arg(plainText(change.order.number)));
        return;
    }
    const QPointer<ChartTrades> self(this);
    if (!OrderQuestion(OutcomeText::replaceQuestion(change), m_window).isConfirmed() || !self) {
        return;
    }
    PriceChange sent = change;
    sent.clientNumber = m_docks->desk()->replace(change);
    tell(sent, OutcomeText::replaceSent(sent), true);
}

void ChartTrades::tell(const PriceChange &change, const QString &text, bool isGood)
{
    m_docks->ticket()->results()->tell(change.clientNumber, text,
                                       isGood ? OrderResults::Tone::Good : OrderResults::Tone::Bad);
}

void ChartTrades::tellReplaced(const PriceChange &change, const DeskOutcome &outcome)
{
    const QString text = OutcomeText::replaced(change, outcome, m_hidesAmounts);
    tell(change, text, outcome.replacement == Trading::ReplacementState::Placed);
    m_prompts->show(text);
}

} // namespace Terminal
