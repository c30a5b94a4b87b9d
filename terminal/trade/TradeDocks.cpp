#include "terminal/trade/TradeDocks.h"

#include "terminal/chart/view/ChartView.h"
#include "terminal/plugin/HostRecords.h"
#include "terminal/plugin/OverlayHost.h"
#include "terminal/plugin/UserPrompts.h"
#include "terminal/trade/OrderResults.h"
#include "terminal/trade/OrderTicket.h"
#include "terminal/trade/OrdersPanel.h"
#include "terminal/trade/OutcomeText.h"
#include "terminal/trade/ShownAmount.h"
#include "terminal/trade/TradeDock.h"

#include <QAction>
#include <QCheckBox>
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
                       Prices prices)
    : m_window(window),
      m_chart(chart),
      m_prompts(prompts),
      m_prices(std::move(prices)),
      m_desk(*desk),
      m_chartOrders(chart),
      m_notice(window, prompts),
      m_ticket(new OrderTicket),
      m_panel(new OrdersPanel),
      m_ticketDock(new TradeDock("ticketDock", m_ticket, window, Qt::RightDockWidgetArea)),
      m_panelDock(new TradeDock("ordersDock", m_panel, window, Qt::BottomDockWidgetArea)),
      m_ticketAction(m_ticketDock->toggleViewAction()),
      m_panelAction(m_panelDock->toggleViewAction()),
      m_askAction(new QAction(this))
{
    m_askAction->setCheckable(true);
    m_askAction->setChecked(true);
    m_panel->setPrices(m_prices.last);
    window->setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    addShortcuts();
    wireTicket();
    wirePanel();
    wireDesk();
    watchDeals();
    connect(chart, &ChartView::dataChanged, this, &TradeDocks::showChart);
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
        m_panelDock->raise(); // the results may lie over it
        m_panel->focusOrders();
    });
}

void TradeDocks::wireTicket()
{
    connect(m_ticket, &OrderTicket::sendAsked, this, &TradeDocks::sendOrder);
    connect(m_ticket, &OrderTicket::left, this, [this] { m_chart->setFocus(); });
    connect(&m_chartOrders, &ChartOrders::priceClicked, this, [this](double price) {
        if (m_ticketDock->isVisible() && !shownDay()) { // a price of a past day is none for an order of today
            m_ticket->setPrice(price);
        }
    });
}

void TradeDocks::wirePanel()
{
    connect(m_panel, &OrdersPanel::cancelAsked, this, &TradeDocks::askToCancel);
    connect(m_panel, &OrdersPanel::closeAsked, this, &TradeDocks::close);
    connect(m_panel, &OrdersPanel::chartAsked, this,
            [this](const Security &security) { Q_EMIT chartAsked(security.code); });
    connect(m_panel, &OrdersPanel::selectionChanged, this,
            [this] { m_chartOrders.setSpotlight(m_panel->selected()); });
    connect(&m_chartOrders, &ChartOrders::pointedAt, m_panel, &OrdersPanel::select);
}

void TradeDocks::wireDesk()
{
    connect(&m_desk, &OrderDesk::ordersChanged, this, &TradeDocks::showOrders);
    connect(&m_desk, &OrderDesk::accountChanged, this, &TradeDocks::showFacts);
    connect(&m_desk, &OrderDesk::answeringChanged, this, &TradeDocks::showFacts);
    connect(&m_desk, &OrderDesk::askedAgain, this, &TradeDocks::tellAskedAgain);
    connect(&m_desk, &OrderDesk::placed, this, &TradeDocks::tellPlaced);
    connect(&m_desk, &OrderDesk::cancelAnswered, this, &TradeDocks::tellCancelled);
}

void TradeDocks::watchDeals()
{
    connect(&m_desk, &OrderDesk::workingOrdersChanged, this, [this] {
        m_panel->setWorkingOrders(m_desk.workingOrders());
        m_deals.take(m_desk.workingOrders().value_or(OrderRecords()));
    });
    connect(&m_desk, &OrderDesk::statusTold, &m_deals, &DealWatch::hear);
    connect(&m_deals, &DealWatch::dealt, &m_desk, &OrderDesk::lookUp); // at which price is not told with it
    connect(&m_desk, &OrderDesk::lookedUp, this, [this](const OrderRecord &order) {
        m_notice.tell(order.number, OutcomeText::dealt(order, m_hidesAmounts));
    });
}

/// A dock needs what the desk knows, also where nobody else has let it ask.
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

void TradeDocks::listWorkingOrders()
{
    m_panel->listWorkingOrders();
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
    m_notice.forget();
    m_ticket->setAmountsHidden(hidden);
    m_panel->setAmountsHidden(hidden);
    showFacts();
}

void TradeDocks::showTexts()
{
    m_ticketDock->setWindowTitle(tr("Order ticket"));
    m_panelDock->setWindowTitle(tr("Orders and positions"));
    m_ticketAction->setText(withKeys(tr("Order ticket: buy, sell"), {keyText(buyKey), keyText(sellKey)}));
    m_panelAction->setText(withKeys(tr("Orders and positions"), {keyText(panelKey)}));
    m_askAction->setText(tr("Ask before an order is sent"));
    m_notice.showTexts();
    showFacts();
}

std::optional<Trading::TradingDate> TradeDocks::shownDay() const
{
    const ChartData &data = m_chart->data();
    const bool isPastDay = data.period == ChartPeriod::Minute && !data.bars.empty() && !isTodaysChart(data);
    return isPastDay ? std::optional(dayOf(data.bars.back())) : std::nullopt;
}

/// None on the chart of a past day: an order is one of today.
std::optional<double> TradeDocks::offeredPrice() const
{
    const auto last = shownDay() ? std::nullopt : m_prices.last(m_chart->data().security);
    return last ? std::optional(last->price) : std::nullopt;
}

void TradeDocks::showChart()
{
    const ChartData &data = m_chart->data();
    m_facts.closeBefore = m_prices.closeBefore(data);
    m_facts.day = m_prices.dayOfRules();
    m_ticket->setFacts(m_facts); // another security begins with them
    m_desk.show(data.security, shownDay());
    m_ticket->setSecurity(data.security, offeredPrice());
    m_panel->setShownSecurity(data.security);
    showOrders();
    showFacts();
}

void TradeDocks::showPrices()
{
    m_ticket->setLastPrice(offeredPrice());
    m_panel->showPrices();
}

void TradeDocks::setAccount(const QString &account)
{
    m_account = account;
    m_ticket->setAccount(account);
}

void TradeDocks::setReadOnly(bool isReadOnly)
{
    m_facts.isReadOnly = isReadOnly;
    showFacts();
}

void TradeDocks::setOtherAccount(bool isOther)
{
    m_facts.isOtherAccount = isOther;
    showFacts();
}

void TradeDocks::showOrders()
{
    m_chartOrders.setOrders(m_desk.orders());
    m_deals.take(m_desk.orders());
    m_panel->setOrders(m_desk.orders(), shownDay());
    m_panel->setRefusals(m_desk.ordersRefusal(), m_desk.accountRefusal());
}

void TradeDocks::showFacts()
{
    const auto &account = m_desk.account();
    const Position *const found = account ? account->find(m_chart->data().security) : nullptr;
    const Position held = found == nullptr ? Position() : *found;
    m_facts.day = m_prices.dayOfRules();
    m_facts.moduleAnswers = m_desk.isAnswering();
    m_facts.available = account ? std::optional(account->available) : std::nullopt;
    m_facts.held = account ? std::optional(held.quantity) : std::nullopt;
    m_facts.sellable = account ? std::optional(held.sellable) : std::nullopt;
    m_ticket->setFacts(m_facts);
    const QString refusal = withoutFigures(m_desk.accountRefusal(), m_hidesAmounts);
    m_ticket->setNotice(refusal.isEmpty() ? QString() : tr("The account is not told: %1").arg(refusal));
    m_panel->setAccount(account);
    m_panel->setAnswering(m_desk.isAnswering());
    m_panel->setRefusals(m_desk.ordersRefusal(), m_desk.accountRefusal());
}

void TradeDocks::sendOrder(const OrderRequest &order)
{
    const QPointer<TradeDocks> self(this); // the window may be closed while the user is asked
    const bool isWanted = !m_askAction->isChecked() || isConfirmed(order);
    if (!self) {
        return;
    }
    if (!isWanted) {
        m_ticket->endSending();
        return;
    }
    const QString number = m_desk.place(order);
    m_ticket->results()->tell(number, OutcomeText::sent(order, m_hidesAmounts), OrderResults::Tone::Plain);
}

/// What the user wishes for the next time holds whatever he answers.
bool TradeDocks::isConfirmed(const OrderRequest &order)
{
    const QPointer<TradeDocks> self(this);
    OrderQuestion question(OutcomeText::sendQuestion(order, m_account), m_window);
    auto *const notAgain = new QCheckBox(tr("Do not ask again (menu View asks again)"));
    question.setCheckBox(notAgain);
    const bool isWanted = question.isConfirmed();
    if (self && notAgain->isChecked()) {
        m_askAction->setChecked(false);
    }
    return isWanted;
}

void TradeDocks::tellAskedAgain(const OrderRequest &order)
{
    if (order.origin == OrderOrigin::Hand) {
        m_ticket->results()->tell(order.clientNumber, OutcomeText::askedAgain(order, m_hidesAmounts),
                                  OrderResults::Tone::Plain);
    }
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
    QString text = OutcomeText::placed(order, outcome, m_hidesAmounts);
    if (const QString standstill = isPlaced && m_standstill ? m_standstill() : QString();
        !standstill.isEmpty()) {
        text += QLatin1Char('\n') + standstill;
    }
    m_ticket->results()->tell(order.clientNumber, text,
                              isPlaced ? OrderResults::Tone::Good : OrderResults::Tone::Bad);
    m_prompts->show(text);
}

bool TradeDocks::isWanted(const OrderRecords &cancelling)
{
    return cancelling.size() == 1
               ? m_prompts->confirm(OutcomeText::cancelQuestion(cancelling.front()))
               : OrderQuestion(OutcomeText::cancelQuestion(cancelling), m_window).isConfirmed();
}

void TradeDocks::askToCancel(const OrderRecords &orders)
{
    const QPointer<TradeDocks> self(this); // the window may be closed while the user is asked,
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): and rows may change
    const OrderRecords cancelling = orders;
    if (!isWanted(cancelling) || !self) {
        return;
    }
    for (const OrderRecord &order : cancelling) {
        m_desk.cancel(order);
    }
}

/// The ticket is filled in, for the user to look at and send.
void TradeDocks::close(const Position &position)
{
    const Trading::SecurityId wanted = position.security.id();
    Q_EMIT chartAsked(position.security.code);
    if (m_chart->data().security.id() == wanted) {
        openTicket(Direction::Sell);
        m_ticket->setQuantity(position.sellable);
    }
}

bool TradeDocks::mayLeave()
{
    const OrderRecords working = m_desk.workingOrders().value_or(OrderRecords());
    return working.empty() ||
           OrderQuestion(OutcomeText::leaveQuestion(working, m_standstill != nullptr), m_window)
               .isConfirmed();
}

/// Beside the results of orders, where one does not take the place of the other.
void TradeDocks::tellCancelled(const OrderRecord &order, const DeskOutcome &outcome)
{
    const bool isTaken = outcome.kind == DeskOutcome::Kind::Accepted;
    const QString text = OutcomeText::cancelled(order, outcome, m_hidesAmounts);
    m_ticket->results()->tell(QStringLiteral("cancellation of ") + order.number, text,
                              isTaken ? OrderResults::Tone::Good : OrderResults::Tone::Bad);
    m_prompts->show(text);
}

} // namespace Terminal
