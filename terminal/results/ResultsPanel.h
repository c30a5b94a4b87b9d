#pragma once

#include "terminal/results/ResultsModel.h"

#include <QWidget>

#include <optional>

class QComboBox;
class QLabel;
class QPushButton;

namespace Terminal {

class ResultsView;

/// Where a row of results is on charts.
struct ResultsPlace
{
    QString code;                            ///< empty: whichever security is shown
    std::optional<Trading::TradingDate> day; ///< nothing: the latest bars
};

/// What the account earned: a list by security, month, year, sale or round trip, its sum, and in which way
/// costs are reckoned.
class ResultsPanel : public QWidget
{
    Q_OBJECT

public:
    explicit ResultsPanel(QWidget *parent = nullptr);

    ResultsModel *model() { return &m_model; }
    ResultsView *view() { return m_view; }

    /// Shows another list.
    void showList(ResultGroup group);

    /// Says in the panel whether its figures are kept up to date.
    void setAnswering(bool isAnswering);
    /// Says why the trading module does not tell results; empty where it does.
    void setRefusal(const QString &reason);
    /// Says what became of the last export, or of the wish to reckon costs otherwise.
    void setNews(const QString &news);
    void setTheme(const ChartTheme &theme);
    void setAmountsHidden(bool hidden);

    QSize sizeHint() const override;

Q_SIGNALS:
    /// Another list is wanted, or the same in another order.
    void wishChanged();
    void placeAsked(const ResultsPlace &place);
    /// The user wants costs to be reckoned in this way.
    void costMethodChosen(const QString &word);
    void exportAsked();

protected:
    void changeEvent(QEvent *event) override;

private:
    void setUpChoices();
    void setWish(const ResultsWish &wish);
    void askForPlace(int row);
    void showTexts();
    void showWhole();
    QString captionText() const;
    QString sumText() const;
    QString sumOf(const Trading::ResultColumn &column, const QString &text) const;

    ResultsModel m_model;
    ResultsView *m_view;
    QComboBox *m_groups;
    QComboBox *m_methods;
    QLabel *m_methodsCaption;
    QLabel *m_caption;
    QLabel *m_sum;
    QPushButton *m_export;
    QString m_refusal;
    QString m_news;
    bool m_isAnswering = false;
    bool m_hidesAmounts = false;
};

} // namespace Terminal
