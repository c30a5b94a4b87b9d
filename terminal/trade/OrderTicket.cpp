#include "terminal/trade/OrderTicket.h"

#include "terminal/chart/text/FigureText.h"
#include "terminal/trade/OrderResults.h"
#include "terminal/trade/PartButtons.h"
#include "terminal/trade/PlainText.h"
#include "terminal/trade/PriceBox.h"
#include "terminal/trade/QuantityBox.h"
#include "terminal/trade/ShrinkingArea.h"
#include "terminal/trade/StyleProperty.h"
#include "terminal/trade/TradeTables.h"

#include <QApplication>
#include <QButtonGroup>
#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace Terminal {

namespace {

constexpr int ticketWidth = 252;
constexpr int margin = 12;
constexpr int gap = 6;

QString sideWord(Direction side)
{
    return side == Direction::Buy ? QStringLiteral("buy") : QStringLiteral("sell");
}

QLabel *makeLabel(const char *name)
{
    auto *const label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

OrderTicket::OrderTicket(QWidget *parent)
    : QWidget(parent),
      m_title(makeLabel("ticketTitle")),
      m_account(makeLabel("ticketAccount")),
      m_buy(new QPushButton),
      m_sell(new QPushButton),
      m_priceLabel(makeLabel("ticketCaption")),
      m_price(new PriceBox),
      m_limits(makeLabel("ticketCaption")),
      m_quantityLabel(makeLabel("ticketCaption")),
      m_quantity(new QuantityBox),
      m_parts(new PartButtons),
      m_largest(makeLabel("ticketCaption")),
      m_amountLabel(makeLabel("ticketCaption")),
      m_amount(makeLabel("ticketAmount")),
      m_problem(makeLabel("ticketProblem")),
      m_send(new QPushButton),
      m_notice(makeLabel("ticketNotice")),
      m_results(new OrderResults)
{
    setUpSides();
    setUpFields();
    setUpLayout();
    setFixedWidth(ticketWidth);
    setSide(Direction::Buy);
    setNotice({});
    showTexts();
}

void OrderTicket::setUpSides()
{
    auto *const sides = new QButtonGroup(this);
    for (QPushButton *const button : {m_buy, m_sell}) {
        button->setCheckable(true);
        sides->addButton(button);
    }
    m_buy->setObjectName(QStringLiteral("buySide"));
    m_sell->setObjectName(QStringLiteral("sellSide"));
    m_send->setObjectName(QStringLiteral("sendOrder"));
    connect(m_buy, &QPushButton::clicked, this, [this] { setSide(Direction::Buy); });
    connect(m_sell, &QPushButton::clicked, this, [this] { setSide(Direction::Sell); });
    m_send->installEventFilter(this);
    connect(m_send, &QPushButton::clicked, this, &OrderTicket::send);
}

void OrderTicket::setUpFields()
{
    m_price->setObjectName(QStringLiteral("orderPrice"));
    m_quantity->setObjectName(QStringLiteral("orderQuantity"));
    connect(m_price, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, [this] {
        m_hasOwnPrice = true;
        showDraft();
    });
    connect(m_quantity, QOverload<int>::of(&QSpinBox::valueChanged), this, &OrderTicket::showDraft);
    connect(m_parts, &PartButtons::chosen, m_quantity, &QuantityBox::setShares);
}

void OrderTicket::setUpLayout()
{
    auto *const sides = new QHBoxLayout;
    sides->setSpacing(0);
    sides->addWidget(m_buy);
    sides->addWidget(m_sell);
    auto *const amounts = new QHBoxLayout;
    amounts->addWidget(m_amountLabel);
    amounts->addWidget(m_amount, 1);
    m_amount->setAlignment(Qt::AlignRight);

    auto *const fields = new QWidget;
    auto *const column = new QVBoxLayout(fields);
    column->setContentsMargins(margin, margin, margin, 0);
    column->setSpacing(gap);
    column->addWidget(m_title);
    column->addWidget(m_account);
    column->addLayout(sides);
    column->addSpacing(gap);
    column->addWidget(m_priceLabel);
    column->addWidget(m_price);
    column->addWidget(m_limits);
    column->addSpacing(gap);
    column->addWidget(m_quantityLabel);
    column->addWidget(m_quantity);
    column->addWidget(m_parts);
    column->addWidget(m_largest);
    column->addSpacing(gap);
    column->addLayout(amounts);

    auto *const foot = new QVBoxLayout;
    foot->setContentsMargins(margin, gap, margin, gap);
    foot->setSpacing(gap);
    foot->addWidget(m_problem);
    foot->addWidget(m_send);
    foot->addWidget(m_notice);

    auto *const whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->setSpacing(0);
    m_fields = new ShrinkingArea(fields);
    whole->addWidget(m_fields); // in a low window what sends the order stays in sight
    whole->addLayout(foot);
    whole->addWidget(new ShrinkingArea(m_results));
    whole->addStretch(1);
}

void OrderTicket::setSecurity(const Security &security, std::optional<double> price)
{
    const bool isOther = security.id() != m_security.id();
    m_security = security;
    m_title->setText(QStringLiteral("%1  %2").arg(plainText(security.name), plainText(security.code)));
    if (isOther) {
        takeRules();
        fillInPrice(price.value_or(0));
    }
    setLastPrice(price);
}

void OrderTicket::takeRules()
{
    showRules();
    m_quantity->setShares(draft().rules().leastQuantity);
}

void OrderTicket::showRules()
{
    const Trading::SecurityRules rules = draft().rules();
    m_price->setRules(rules);
    m_quantity->setRules(rules);
    showSteps();
}

void OrderTicket::showSteps()
{
    const Trading::SecurityRules rules = draft().rules();
    m_price->setToolTip(
        tr("Up and down move by %1; a click on the chart takes its price").arg(rules.tick.text()));
    m_quantity->setToolTip(tr("Up and down move by a lot of %1 shares").arg(rules.lot()));
}

void OrderTicket::setAccount(const QString &account)
{
    m_accountName = account;
    showAccount();
}

void OrderTicket::showAccount()
{
    m_account->setText(tr("Account %1").arg(plainText(m_accountName)));
    m_account->setVisible(!m_accountName.isEmpty());
}

void OrderTicket::setNotice(const QString &notice)
{
    m_notice->setText(plainText(notice));
    m_notice->setVisible(!notice.isEmpty());
}

void OrderTicket::setFacts(const DraftFacts &facts)
{
    const bool isOtherDay = facts.day != m_facts.day;
    m_facts = facts;
    if (isOtherDay) {
        showRules();
    }
    showDraft();
}

void OrderTicket::setSide(Direction side)
{
    m_side = side;
    m_buy->setChecked(side == Direction::Buy);
    m_sell->setChecked(side == Direction::Sell);
    setStyleProperty(m_send, "side", sideWord(side));
    showDraft();
}

void OrderTicket::setLastPrice(std::optional<double> price)
{
    const QWidget *const focus = QApplication::focusWidget();
    if (price && !m_hasOwnPrice && !(focus != nullptr && isAncestorOf(focus))) {
        fillInPrice(*price);
    }
    showDraft();
}

void OrderTicket::fillInPrice(double price)
{
    m_price->setValue(price);
    m_hasOwnPrice = false;
}

void OrderTicket::setPrice(double price)
{
    m_price->setValue(price);
    m_hasOwnPrice = true; // also when it is what stands there
}

void OrderTicket::setQuantity(qint64 shares)
{
    m_quantity->setShares(shares);
}

void OrderTicket::setAmountsHidden(bool hidden)
{
    if (hidden && !m_hidesAmounts) {
        m_results->clear(); // they may tell the quantities of the last orders
    }
    m_hidesAmounts = hidden;
    showDraft();
}

OrderDraft OrderTicket::draft() const
{
    return OrderDraft({m_security, m_side, m_price->value(), m_quantity->shares()}, m_facts, m_hidesAmounts);
}

void OrderTicket::focusPrice()
{
    m_price->setFocus(Qt::ShortcutFocusReason);
    m_price->selectAll();
    m_fields->bringIntoSight(m_price);
}

void OrderTicket::showTexts()
{
    setAccessibleName(tr("Order ticket"));
    m_buy->setText(sideText(Direction::Buy));
    m_sell->setText(sideText(Direction::Sell));
    m_priceLabel->setText(tr("Price"));
    m_price->setAccessibleName(tr("Price"));
    m_quantity->setAccessibleName(tr("Quantity in shares"));
    showSteps();
    m_amountLabel->setText(tr("Amount without fees"));
    m_send->setToolTip(tr("Enter sends, Escape goes back to the chart"));
    m_parts->showTexts();
    showAccount();
    showDraft();
}

void OrderTicket::showDraft()
{
    const OrderDraft shown = draft();
    const auto limits = shown.limits();
    const auto largest = shown.largestQuantity();
    const QString problem = shown.problem();
    m_limits->setText(limits ? tr("Limits %1 – %2").arg(limits->lowest.text(), limits->highest.text())
                             : QString());
    m_limits->setVisible(limits.has_value());
    const auto amount = [this](const QString &figure) { return shownAmount(figure, m_hidesAmounts); };
    m_quantityLabel->setText(tr("Quantity: lots %1").arg(amount(QString::number(shown.lots()))));
    m_largest->setText(largest ? tr("At most %1").arg(amount(QString::number(*largest))) : QString());
    m_largest->setVisible(largest.has_value());
    m_parts->setLargest(largest, shown.rules());
    m_amount->setText(amount(amountText(shown.amount())));
    m_problem->setText(problem);
    m_send->setText(orderSummary(shown.order(), m_hidesAmounts));
    m_send->setEnabled(problem.isEmpty());
    m_send->setAccessibleDescription(problem);
}

void OrderTicket::send()
{
    m_price->interpretText();
    m_quantity->interpretText();
    const OrderDraft order = draft();
    if (!m_isSending && order.problem().isEmpty()) {
        m_isSending = true;
        Q_EMIT sendAsked(order.order());
    }
}

void OrderTicket::endSending()
{
    m_isSending = false;
}

/// The second press of a double click on the button is no second order.
bool OrderTicket::eventFilter(QObject *watched, QEvent *event)
{
    const bool isSecondPress = watched == m_send && event->type() == QEvent::MouseButtonDblClick;
    return isSecondPress || QWidget::eventFilter(watched, event);
}

void OrderTicket::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        showTexts();
    }
    QWidget::changeEvent(event);
}

void OrderTicket::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && (m_price->hasFocus() || m_quantity->hasFocus() || m_send->hasFocus())) {
        if (!event->isAutoRepeat()) { // a key that is held is one order
            send();
        }
    } else if (event->key() == Qt::Key_Escape) {
        Q_EMIT left();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace Terminal
