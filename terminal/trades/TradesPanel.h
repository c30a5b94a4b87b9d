#pragma once

#include "terminal/trades/TradesTable.h"

#include <QWidget>

namespace Terminal {

class ElidedLabel;
class RecordView;

/// All trades of the shown security, newest first, and what they come to: all of them, or those that are
/// selected. A click on a row, or Enter, asks for its place on the chart.
class TradesPanel : public QWidget
{
    Q_OBJECT

public:
    explicit TradesPanel(QWidget *parent = nullptr);

    /// Oldest first; their numbers are what select() and the signals mean.
    void setTrades(const Security &security, const Trades &trades);
    /// Whether the module has told them; nobody knows before whether there are none.
    void setTold(bool told);
    /// Says why the trading module does not tell them; empty where it does.
    void setRefusal(const QString &reason);
    void setTheme(const ChartTheme &theme);
    void setAmountsHidden(bool hidden);

    /// Selects the rows of these trades and brings the newest of them into view.
    void select(const std::vector<size_t> &trades);
    std::vector<size_t> selected() const;

    /// Takes the keyboard, to the first row at first.
    void focusRows();

    QSize sizeHint() const override;

Q_SIGNALS:
    void selectionChanged();
    void placeAsked(size_t trade);

protected:
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showTexts();
    QString sumText(const std::vector<size_t> &trades) const;
    QString partText(const TradeSum::Part &part, const QString &caption) const;

    Trades m_trades;
    TradesTable m_table;
    Security m_security;
    QString m_refusal;
    bool m_isTold = true;
    ElidedLabel *m_caption;
    RecordView *m_view;
    bool m_hidesAmounts = false;
};

} // namespace Terminal
