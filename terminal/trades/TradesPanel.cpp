#include "terminal/trades/TradesPanel.h"

#include "terminal/trade/ElidedLabel.h"
#include "terminal/trade/RecordView.h"
#include "terminal/trade/TradeTables.h"

#include <QEvent>
#include <QKeyEvent>
#include <QVBoxLayout>

#include <numeric>

namespace Terminal {

namespace {

constexpr int panelHeight = 190;

} // namespace

TradesPanel::TradesPanel(QWidget *parent)
    : QWidget(parent),
      m_caption(new ElidedLabel),
      m_view(new RecordView(&m_table, static_cast<int>(TradeColumn::Order)))
{
    m_caption->setObjectName(QStringLiteral("panelCaption"));
    m_view->setObjectName(QStringLiteral("tradesView"));
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->installEventFilter(this);
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        showTexts();
        Q_EMIT selectionChanged();
    });
    connect(m_view, &QAbstractItemView::clicked, this,
            [this](const QModelIndex &cell) { Q_EMIT placeAsked(m_table.tradeOf(cell.row())); });
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_caption);
    layout->addWidget(m_view);
    showTexts();
}

QSize TradesPanel::sizeHint() const
{
    return {QWidget::sizeHint().width(), panelHeight};
}

/// What is selected stays so while new trades come: rows are added at the top.
void TradesPanel::setTrades(const Security &security, const Trades &trades)
{
    const bool isOther = security.id() != m_security.id();
    m_security = security;
    m_trades = trades;
    if (isOther) {
        m_table.setTrades({});
    }
    m_table.setTrades(trades);
    showTexts();
    Q_EMIT selectionChanged();
}

void TradesPanel::setTold(bool told)
{
    if (told != m_isTold) {
        m_isTold = told;
        showTexts();
    }
}

void TradesPanel::setRefusal(const QString &reason)
{
    m_refusal = reason;
    showTexts();
}

void TradesPanel::setTheme(const ChartTheme &theme)
{
    m_table.setTheme(theme);
}

void TradesPanel::setAmountsHidden(bool hidden)
{
    m_hidesAmounts = hidden;
    m_table.setAmountsHidden(hidden);
    showTexts();
}

std::vector<size_t> TradesPanel::selected() const
{
    std::vector<size_t> trades;
    for (const QModelIndex &row : m_view->selectionModel()->selectedRows()) {
        trades.push_back(m_table.tradeOf(row.row()));
    }
    return trades;
}

void TradesPanel::select(const std::vector<size_t> &trades)
{
    QItemSelection rows;
    int newest = static_cast<int>(m_trades.size());
    for (const size_t trade : trades) {
        const int row = m_table.rowOf(trade);
        rows.select(m_table.index(row, 0), m_table.index(row, m_table.columnCount({}) - 1));
        newest = std::min(newest, row);
    }
    m_view->selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
    if (!rows.isEmpty()) {
        m_view->selectionModel()->setCurrentIndex(m_table.index(newest, 0), QItemSelectionModel::NoUpdate);
        m_view->scrollTo(m_table.index(newest, 0));
    }
}

void TradesPanel::focusRows()
{
    m_view->setFocus(Qt::ShortcutFocusReason);
    if (!m_view->currentIndex().isValid() && m_table.rowCount({}) > 0) {
        m_view->selectRow(0);
    }
}

bool TradesPanel::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_view && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if ((key == Qt::Key_Return || key == Qt::Key_Enter) && m_view->currentIndex().isValid()) {
            Q_EMIT placeAsked(m_table.tradeOf(m_view->currentIndex().row()));
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void TradesPanel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        m_table.retranslate();
        showTexts();
    }
    QWidget::changeEvent(event);
}

QString TradesPanel::partText(const TradeSum::Part &part, const QString &caption) const
{
    const auto shown = [this](const QString &figure) { return shownAmount(figure, m_hidesAmounts); };
    return caption.arg(shown(QString::number(part.quantity)), QString::number(part.averagePrice(), 'f', 3),
                       shown(amountText(part.amount)));
}

/// "12 · bought 3000 at 10.250 on average: 30,750.00 · sold …"
QString TradesPanel::sumText(const std::vector<size_t> &trades) const
{
    TradeSum sum;
    for (const size_t trade : trades) {
        sum.add(m_trades[trade]);
    }
    QStringList parts{QString::number(sum.count)};
    if (sum.bought.quantity > 0) {
        parts.append(partText(sum.bought, tr("bought %1 at %2 on average: %3")));
    }
    if (sum.sold.quantity > 0) {
        parts.append(partText(sum.sold, tr("sold %1 at %2 on average: %3")));
    }
    return parts.join(QStringLiteral(u" · "));
}

void TradesPanel::showTexts()
{
    const QString name = plainText(m_security.name.isEmpty() ? m_security.code : m_security.name);
    const std::vector<size_t> chosen = selected();
    QString text;
    if (!m_refusal.isEmpty()) {
        text =
            tr("Trades of %1 · refused: %2").arg(name, plainText(withoutFigures(m_refusal, m_hidesAmounts)));
    } else if (!m_isTold && m_trades.empty()) {
        text = tr("Trades of %1 · no answer from the trading module").arg(name);
    } else if (!chosen.empty()) {
        text = tr("Selected: %1").arg(sumText(chosen));
    } else {
        std::vector<size_t> all(m_trades.size());
        std::iota(all.begin(), all.end(), size_t{0});
        text = tr("Trades of %1: %2").arg(name, sumText(all));
    }
    m_caption->setText(text);
    m_view->setAccessibleName(tr("Trades"));
}

} // namespace Terminal
