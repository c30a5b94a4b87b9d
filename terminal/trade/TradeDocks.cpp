#include "terminal/trade/TradeDocks.h"

#include "terminal/chart/view/ChartView.h"
#include "terminal/plugin/HostRecords.h"
#include "terminal/plugin/OverlayHost.h"
#include "terminal/plugin/UserPrompts.h"
#include "terminal/trade/OrderTicket.h"
#include "terminal/trade/OrdersPanel.h"

#include <QAbstractButton>
#include <QAction>
#include <QDockWidget>
#include <QMainWindow>
#include <QPainter>
#include <QShortcut>

namespace Terminal {

namespace {

constexpr auto buyKey = Qt::Key_F1;
constexpr auto sellKey = Qt::Key_F2;
constexpr auto panelKey = Qt::Key_F3;

/// A cross that is sharp on screens of twice the density, too.
QIcon crossIcon(const QColor &colour)
{
    constexpr int side = 12;
    constexpr int margin = 2;
    constexpr int density = 2;
    QPixmap cross(side * density, side * density);
    cross.setDevicePixelRatio(density);
    cross.fill(Qt::transparent);
    QPainter painter(&cross);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1.5));
    painter.drawLine(margin, margin, side - margin, side - margin);
    painter.drawLine(margin, side - margin, side - margin, margin);
    return QIcon(cross);
}

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
      m_ticketDock(addDock("ticketDock", m_ticket, Qt::RightDockWidgetArea)),
      m_panelDock(addDock("ordersDock", m_panel, Qt::BottomDockWidgetArea)),
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
    for (QDockWidget *const dock : {m_ticketDock, m_panelDock}) {
        connect(dock, &QDockWidget::visibilityChanged, this, &TradeDocks::watchWhenShown);
    }
    showTexts();
}

TradeDocks::~TradeDocks() = default;

QDockWidget *TradeDocks::addDock(const char *name, QWidget *content, Qt::DockWidgetArea area)
{
    auto *const dock = new QDockWidget(m_window);
    dock->setObjectName(QLatin1String(name));
    dock->setFeatures(QDockWidget::DockWidgetClosable);
    dock->setContextMenuPolicy(Qt::PreventContextMenu);
    content->setAutoFillBackground(true);
    dock->setWidget(content);
    m_window->addDockWidget(area, dock);
    dock->hide();
    return dock;
}

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
    const QPalette colours = widgetPalette(theme);
    for (QDockWidget *const dock : {m_ticketDock, m_panelDock}) {
        dock->setPalette(colours);
        for (QWidget *const widget : dock->findChildren<QWidget *>()) {
            widget->setPalette(colours); // a style sheet keeps a window's palette from its children
        }
        // The style's own cross is black and grey on every theme.
        dock->findChild<QAbstractButton *>(QStringLiteral("qt_dockwidget_closebutton"))
            ->setIcon(crossIcon(theme.text));
    }
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
    m_ticket->showResult(tr("Sent: %1").arg(orderSummary(order, m_hidesAmounts)), OrderTicket::Tone::Plain);
    m_desk.place(order);
}

void TradeDocks::tellPlaced(const OrderRequest &order, const DeskOutcome &outcome)
{
    if (order.origin != OrderOrigin::Hand) {
        return;
    }
    if (!outcome.isLate) {
        m_ticket->endSending();
    }
    const QString what = orderSummary(order, m_hidesAmounts);
    const auto tell = [this](const QString &text, OrderTicket::Tone tone) {
        m_ticket->showResult(text, tone);
        m_prompts->show(text);
    };
    switch (outcome.kind) {
    case DeskOutcome::Kind::Accepted:
        tell(tr("%1: accepted, number %2").arg(what, outcome.text), OrderTicket::Tone::Good);
        break;
    case DeskOutcome::Kind::Refused:
        tell(tr("%1: refused: %2").arg(what, outcome.text), OrderTicket::Tone::Bad);
        break;
    case DeskOutcome::Kind::NotSent:
        tell(tr("%1: not sent, there is no connection to the trading module").arg(what),
             OrderTicket::Tone::Bad);
        break;
    case DeskOutcome::Kind::NoAnswer:
        tell(tr("%1: no answer yet; look at the list of orders before you send it again").arg(what),
             OrderTicket::Tone::Bad);
        break;
    }
}

/// The question shows everything, also while amounts are hidden: the user has to know what he cancels.
void TradeDocks::askToCancel(const OrderRecord &order)
{
    const QStringList lines{
        tr("Cancel this order?"),
        QStringLiteral("%1 %2").arg(order.security.name, order.security.code),
        orderSummary({order.security, order.side, order.price, order.quantity}, false),
        tr("Dealt so far: %1").arg(order.dealt),
        tr("Number: %1").arg(order.number),
    };
    const QPointer<TradeDocks> self(this); // the window may be closed while the user is asked
    if (m_prompts->confirm(lines.join(QLatin1Char('\n'))) && self) {
        m_desk.cancel(order);
    }
}

void TradeDocks::tellCancelled(const OrderRecord &order, const DeskOutcome &outcome)
{
    switch (outcome.kind) {
    case DeskOutcome::Kind::Accepted:
        m_prompts->show(outcome.text);
        break;
    case DeskOutcome::Kind::Refused:
        m_prompts->show(tr("Order %1 is not cancelled: %2").arg(order.number, outcome.text));
        break;
    case DeskOutcome::Kind::NotSent:
        m_prompts->show(
            tr("Order %1 is not cancelled: there is no connection to the trading module").arg(order.number));
        break;
    case DeskOutcome::Kind::NoAnswer:
        m_prompts->show(tr("No answer yet to the cancellation of order %1").arg(order.number));
        break;
    }
}

} // namespace Terminal
